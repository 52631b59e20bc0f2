#include "platform/x11/input_checks.hpp"

#include "platform/x11/input_hub.hpp"
#include "platform/x11/wheel_kind.hpp"
#include "platform/x11/x11_event_tap.hpp"

#include <X11/Xlib.h>

#include <algorithm>

namespace orvel::x11 {

namespace {

std::string namesOf(const std::vector<InputDevice>& devices) {
    std::string names;
    for (const InputDevice& device : devices) {
        if (!names.empty()) names += ", ";
        names += device.name;
    }
    return names;
}

template <typename Predicate>
std::vector<InputDevice> devicesThat(const std::vector<InputDevice>& devices, Predicate accepts) {
    std::vector<InputDevice> found;
    std::copy_if(devices.begin(), devices.end(), std::back_inserter(found), accepts);
    return found;
}

ServiceCheck checkKeyboards(const std::vector<InputDevice>& devices) {
    const auto keyboards = devicesThat(
        devices, [](const InputDevice& device) { return device.hasKeys && device.isEnabled; });
    if (keyboards.empty()) {
        return {.name = "keyboards",
                .isOk = false,
                .isEssential = true,
                .finding = "none is attached to this session, so no key can be changed",
                .remedy = "plug one in; it is taken as soon as it is there"};
    }
    return {.name = "keyboards",
            .isOk = true,
            .isEssential = true,
            .finding = namesOf(keyboards),
            .remedy = {}};
}

ServiceCheck checkTap(X11Session& session) {
    const bool isTaken = XGetSelectionOwner(session.display(), session.atom(kTapSelection)) != 0;
    return {.name = "tap",
            .isOk = true,
            .isEssential = true,
            .finding = isTaken ? "Orvel runs in this session" : "free",
            .remedy = {}};
}

ServiceCheck checkWheels(const std::vector<InputDevice>& devices) {
    const auto wheels = devicesThat(devices, [](const InputDevice& device) {
        return wheelKindOf(device) == WheelKind::notched;
    });
    if (wheels.empty()) {
        return {.name = "wheel mice",
                .isOk = false,
                .isEssential = false,
                .finding = "none, so there is no wheel to reverse",
                .remedy = {}};
    }
    return {.name = "wheel mice",
            .isOk = true,
            .isEssential = false,
            .finding = namesOf(wheels),
            .remedy = {}};
}

ServiceCheck checkFnKey(const KeyMap& map, const std::string& fnKey) {
    ServiceCheck check{
        .name = "Fn key", .isOk = true, .isEssential = false, .finding = fnKey, .remedy = {}};
    if (fnKey.empty()) {
        check.isOk = false;
        check.finding = "X11 knows no such key and none is named, so Fn+arrows does nothing";
        check.remedy = "name a key in ~/.config/orvel/platform.conf: [keys] fn = Menu";
    } else if (map.keycodeOf(key::fn) == 0) {
        check.isOk = false;
        check.finding = "'" + fnKey + "' is on no key of this keyboard";
        check.remedy = "name another key in ~/.config/orvel/platform.conf";
    }
    return check;
}

}  // namespace

std::vector<ServiceCheck> checkInput(X11Session& session, const std::string& fnKey) {
    const auto devices = listDevices(session, findMasters(session));
    InputHub hub(session);
    hub.setFnKey(fnKey);
    return {checkTap(session), checkKeyboards(devices), checkWheels(devices),
            checkFnKey(hub.map(), fnKey)};
}

}  // namespace orvel::x11
