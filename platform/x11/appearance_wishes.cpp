#include "platform/x11/appearance_wishes.hpp"

#include <algorithm>
#include <cctype>

namespace orvel::x11 {

namespace {

std::string lower(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return result;
}

/// Themes say so in their names: Adwaita-dark, Arc-Dark, Greybird-dark.
bool isDarkTheme(std::string_view name) { return lower(name).find("dark") != std::string::npos; }

std::string_view trimmed(std::string_view text) {
    const auto from = text.find_first_not_of(" \t\r");
    if (from == std::string_view::npos) return {};
    return text.substr(from, text.find_last_not_of(" \t\r") - from + 1);
}

}  // namespace

bool AppearanceWishes::isDark() const {
    constexpr unsigned kDark = 1;
    constexpr unsigned kLight = 2;
    if (colorScheme == kDark) return true;
    if (colorScheme == kLight) return false;
    if (themeName) return isDarkTheme(*themeName);
    return filePrefersDark.value_or(false) || isDarkTheme(fileThemeName.value_or(""));
}

bool AppearanceWishes::prefersReducedMotion() const {
    return !portalAnimates.value_or(daemonAnimates.value_or(true));
}

void readGtkSettings(std::string_view text, AppearanceWishes& wishes) {
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        const auto middle = line.find('=');
        if (middle == std::string_view::npos) continue;
        const std::string_view key = trimmed(line.substr(0, middle));
        const std::string value(trimmed(line.substr(middle + 1)));
        if (key == "gtk-theme-name") wishes.fileThemeName = value;
        if (key == "gtk-application-prefer-dark-theme") {
            wishes.filePrefersDark = value == "1" || lower(value) == "true";
        }
    }
}

}  // namespace orvel::x11
