#include "engine/finder_folder.hpp"

#include <algorithm>
#include <charconv>

namespace orvel {

namespace {

constexpr std::string_view kScheme = "file://";
constexpr std::string_view kRootLabel = "🏠";

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const auto first = text.find_first_not_of(blanks);
    if (first == text.npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string percentDecoded(std::string_view text) {
    std::string decoded;
    decoded.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned value = 0;
        if (text[i] == '%' && i + 2 < text.size() &&
            std::from_chars(&text[i + 1], &text[i + 1] + 2, value, 16).ptr == &text[i + 1] + 2) {
            decoded += static_cast<char>(value);
            i += 2;
        } else {
            decoded += text[i];
        }
    }
    return decoded;
}

}  // namespace

FinderFolder finderFolder(std::string_view scriptOutput) {
    std::string_view url = trimmed(scriptOutput);
    if (!url.starts_with(kScheme)) return {{std::string(kRootLabel), "根目录"}, "/"};
    url.remove_prefix(kScheme.size());
    url.remove_prefix(std::min(url.find('/'), url.size()));  // the host

    FinderFolder folder{{std::string(kRootLabel)}, {}};
    while (!url.empty()) {
        url.remove_prefix(1);
        const std::string_view component = url.substr(0, url.find('/'));
        url.remove_prefix(component.size());
        if (component.empty()) continue;
        folder.labels.push_back(percentDecoded(component));
        folder.path += '/' + folder.labels.back();
    }
    if (folder.path.empty()) folder.path = "/";
    return folder;
}

}  // namespace orvel
