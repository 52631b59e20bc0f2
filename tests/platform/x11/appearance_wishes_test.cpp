#include "platform/x11/appearance_wishes.hpp"

#include "platform/x11/x_settings.hpp"

#include <gmock/gmock.h>

#include <string_view>
#include <vector>

namespace orvel::x11 {
namespace {

TEST(AppearanceWishes, WithoutAnyWishSurfacesAreLightAndMove) {
    EXPECT_FALSE(AppearanceWishes{}.isDark());
    EXPECT_FALSE(AppearanceWishes{}.prefersReducedMotion());
}

TEST(AppearanceWishes, ThePortalsWishGoesBeforeTheTheme) {
    EXPECT_TRUE((AppearanceWishes{.colorScheme = 1, .themeName = "Adwaita"}.isDark()));
    EXPECT_FALSE((AppearanceWishes{.colorScheme = 2, .themeName = "Adwaita-dark"}.isDark()));
}

TEST(AppearanceWishes, WithoutAPreferenceOfThePortalTheThemeCounts) {
    EXPECT_TRUE((AppearanceWishes{.colorScheme = 0, .themeName = "Arc-Dark"}.isDark()));
    EXPECT_FALSE((AppearanceWishes{.colorScheme = 0, .themeName = "Greybird"}.isDark()));
}

TEST(AppearanceWishes, TheSettingsDaemonGoesBeforeTheFile) {
    EXPECT_FALSE((AppearanceWishes{.themeName = "Adwaita", .filePrefersDark = true}.isDark()));
    EXPECT_TRUE((AppearanceWishes{.filePrefersDark = true}.isDark()));
    EXPECT_TRUE((AppearanceWishes{.fileThemeName = "Adwaita-dark"}.isDark()));
}

TEST(AppearanceWishes, AnimationsSwitchedOffAreReducedMotion) {
    EXPECT_TRUE((AppearanceWishes{.portalAnimates = false}.prefersReducedMotion()));
    EXPECT_TRUE((AppearanceWishes{.daemonAnimates = false}.prefersReducedMotion()));
    EXPECT_FALSE(
        (AppearanceWishes{.portalAnimates = true, .daemonAnimates = false}.prefersReducedMotion()));
}

TEST(AppearanceWishes, ReadsTheSettingsFileOfGtk) {
    AppearanceWishes wishes;
    readGtkSettings(
        "[Settings]\n gtk-theme-name = Adwaita \ngtk-application-prefer-dark-theme=1\nbroken\n",
        wishes);
    EXPECT_EQ(wishes.fileThemeName, "Adwaita");
    EXPECT_EQ(wishes.filePrefersDark, true);
    readGtkSettings("gtk-application-prefer-dark-theme=false", wishes);
    EXPECT_EQ(wishes.filePrefersDark, false);
}

/// A text, a colour and a number, least significant byte first.
std::vector<std::uint8_t> sampleSettings() {
    constexpr std::string_view bytes(
        "\0\0\0\0\7\0\0\0\3\0\0\0"
        "\1\0\15\0Net/ThemeName\0\0\0\1\0\0\0\14\0\0\0Adwaita-dark"
        "\2\0\5\0Color\0\0\0\1\0\0\0\1\2\3\4\5\6\7\10"
        "\0\0\24\0Gtk/EnableAnimations\1\0\0\0\0\0\0\0",
        12 + 4 + 16 + 4 + 4 + 12 + 4 + 8 + 4 + 8 + 4 + 20 + 4 + 4);
    return {bytes.begin(), bytes.end()};
}

TEST(XSettings, GivesTextsAndNumbers) {
    const XSettings settings = parseXSettings(sampleSettings());
    EXPECT_EQ(std::get<std::string>(settings.at("Net/ThemeName")), "Adwaita-dark");
    EXPECT_EQ(std::get<std::int32_t>(settings.at("Gtk/EnableAnimations")), 0);
    EXPECT_EQ(settings.size(), 2U);
}

TEST(XSettings, ADamagedPropertyGivesWhatCameBefore) {
    const std::vector<std::uint8_t> whole = sampleSettings();
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const std::vector<std::uint8_t> part(whole.begin(),
                                             whole.begin() + static_cast<long>(length));
        EXPECT_LT(parseXSettings(part).size(), 2U) << length;
    }
}

TEST(XSettings, ReadsTheOtherByteOrder) {
    constexpr std::string_view bytes("\1\0\0\0\0\0\0\7\0\0\0\1\0\0\0\3One\0\0\0\0\1\0\0\0\5", 28);
    const std::vector<std::uint8_t> property(bytes.begin(), bytes.end());
    EXPECT_EQ(std::get<std::int32_t>(parseXSettings(property).at("One")), 5);
}

}  // namespace
}  // namespace orvel::x11
