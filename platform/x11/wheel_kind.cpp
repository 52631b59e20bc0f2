#include "platform/x11/wheel_kind.hpp"

#include <algorithm>
#include <array>
#include <cctype>
#include <string_view>

namespace orvel::x11 {

namespace {

constexpr int kWheelButtons = 5;

/// Properties that only drivers of touchpads make.
constexpr std::array<std::string_view, 3> kTouchpadProperties{"libinput Tapping Enabled",
                                                              "Synaptics Off", "Synaptics Finger"};
constexpr std::array<std::string_view, 8> kContinuousNames{
    "touchpad",   "trackpad",       "clickpad",    "glidepoint",
    "trackpoint", "pointing stick", "touchscreen", "touch screen"};

std::string lowered(std::string_view text) {
    std::string low(text);
    std::transform(low.begin(), low.end(), low.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return low;
}

bool isTouchpadByDriver(const InputDevice& device) {
    return std::any_of(device.properties.begin(), device.properties.end(), [](const auto& name) {
        return std::find(kTouchpadProperties.begin(), kTouchpadProperties.end(), name) !=
               kTouchpadProperties.end();
    });
}

bool isContinuousByName(const InputDevice& device) {
    const std::string name = lowered(device.name);
    return std::any_of(kContinuousNames.begin(), kContinuousNames.end(),
                       [&](std::string_view part) { return name.find(part) != std::string::npos; });
}

}  // namespace

WheelKind wheelKindOf(const InputDevice& device) {
    if (device.buttonCount < kWheelButtons && !device.scrolls) return WheelKind::none;
    if (isTouchpadByDriver(device) || isContinuousByName(device)) return WheelKind::continuous;
    return WheelKind::notched;
}

}  // namespace orvel::x11
