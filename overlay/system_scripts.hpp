#pragma once

#include <string_view>

/// Script texts that the overlay sends to the desktop.
namespace orvel::overlay_script {

/// Shows the Dock again and takes its reveal delay back.
inline constexpr std::string_view restoreDock =
    "do shell script \"defaults write com.apple.dock autohide -bool false; "
    "defaults delete com.apple.dock autohide-delay 2>/dev/null || true; killall Dock\"";

}  // namespace orvel::overlay_script
