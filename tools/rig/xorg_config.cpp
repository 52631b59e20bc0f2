#include "tools/rig/xorg_config.hpp"

#include <sstream>

namespace orvel::rig {
namespace {

constexpr const char* kServerFlags = R"(Section "ServerFlags"
  Option "AutoAddDevices" "false"
  Option "AutoEnableDevices" "true"
  Option "AllowEmptyInput" "true"
  Option "DontVTSwitch" "true"
  Option "BlankTime" "0"
  Option "StandbyTime" "0"
  Option "SuspendTime" "0"
  Option "OffTime" "0"
EndSection
)";

std::string layout() {
    std::ostringstream text;
    text << "Section \"ServerLayout\"\n  Identifier \"layout\"\n  Screen \"screen\"\n"
         << "  InputDevice \"" << kFirstKeyboard << "\" \"CoreKeyboard\"\n"
         << "  InputDevice \"" << kMouse << "\" \"CorePointer\"\n"
         << "  InputDevice \"" << kSecondKeyboard << "\" \"SendCoreEvents\"\n"
         << "  InputDevice \"" << kTouchpad << "\" \"SendCoreEvents\"\n"
         << "EndSection\n";
    return text.str();
}

std::string inputDevice(const char* name, const char* type, const std::filesystem::path& folder) {
    std::ostringstream text;
    text << "Section \"InputDevice\"\n  Identifier \"" << name << "\"\n  Driver \"inputtest\"\n"
         << "  Option \"SocketPath\" \"" << (folder / name).string() << "\"\n"
         << "  Option \"DeviceType\" \"" << type << "\"\n"
         << "  Option \"PointerButtonCount\" \"12\"\n"
         // As with libinput, which leaves nothing for the server to accelerate.
         << "  Option \"AccelerationScheme\" \"none\"\nEndSection\n";
    return text.str();
}

std::string screen(ScreenSize size) {
    std::ostringstream mode;
    mode << size.width << 'x' << size.height;
    // Room for a second monitor of the same size beside the first one.
    constexpr int kVideoRamKb = 256'000;
    // The dummy driver asks only that totals exceed sizes; no signal is ever made.
    constexpr int kBlanking = 48;
    std::ostringstream text;
    text << "Section \"Device\"\n  Identifier \"card\"\n  Driver \"dummy\"\n  VideoRam "
         << kVideoRamKb << "\nEndSection\n"
         << "Section \"Monitor\"\n  Identifier \"monitor\"\n  HorizSync 5.0-1000.0\n"
         << "  VertRefresh 5.0-200.0\n  Modeline \"" << mode.str() << "\" 173.0 " << size.width
         << ' ' << size.width + kBlanking << ' ' << size.width + 2 * kBlanking << ' '
         << size.width + 3 * kBlanking << ' ' << size.height << ' ' << size.height + 3 << ' '
         << size.height + 8 << ' ' << size.height + 20 << "\nEndSection\n"
         << "Section \"Screen\"\n  Identifier \"screen\"\n  Device \"card\"\n"
         << "  Monitor \"monitor\"\n  DefaultDepth 24\n  SubSection \"Display\"\n    Depth 24\n"
         << "    Modes \"" << mode.str() << "\"\n  EndSubSection\nEndSection\n";
    return text.str();
}

}  // namespace

std::string xorgConfig(ScreenSize size, const std::filesystem::path& socketFolder) {
    return kServerFlags + layout() + inputDevice(kFirstKeyboard, "Keyboard", socketFolder) +
           inputDevice(kSecondKeyboard, "Keyboard", socketFolder) +
           inputDevice(kMouse, "Pointer", socketFolder) +
           inputDevice(kTouchpad, "Pointer", socketFolder) + screen(size);
}

}  // namespace orvel::rig
