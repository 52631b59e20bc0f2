#pragma once

#include <string_view>

namespace orvel::scripts {

/// Makes the system ask early for the right to drive the file manager; the answer is not used.
inline constexpr std::string_view kFinderVersion = R"(tell application "Finder" to get version)";

inline constexpr std::string_view kShowDesktop =
    R"(tell application "System Events" to key code 103)";

inline constexpr std::string_view kLockScreen =
    R"(tell application "System Events" to keystroke "q" using {command down, control down})";

/// Gives the front window's folder, or the desktop, as a file URL.
inline constexpr std::string_view kFrontFinderFolder =
    "tell application \"Finder\"\n"
    "try\n"
    "if exists Finder window 1 then\n"
    "return URL of (target of Finder window 1)\n"
    "else\n"
    "return URL of desktop\n"
    "end if\n"
    "on error errMsg\n"
    "return \"ERROR: \" & errMsg\n"
    "end try\n"
    "end tell";

}  // namespace orvel::scripts
