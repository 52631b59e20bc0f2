#pragma once

#include <filesystem>
#include <string>

namespace orvel::rig {

struct ScreenSize {
    int width = 1920;
    int height = 1080;
};

constexpr const char* kFirstKeyboard = "kbd0";
constexpr const char* kSecondKeyboard = "kbd1";
constexpr const char* kMouse = "mouse0";
constexpr const char* kTouchpad = "pad0";

/// The configuration of a server without hardware: one dummy screen, two keyboards and two
/// pointers whose events come from sockets of their names in this folder.
std::string xorgConfig(ScreenSize size, const std::filesystem::path& socketFolder);

}  // namespace orvel::rig
