#include "platform/x11/x11_essentials.hpp"

#include "platform/x11/input_devices.hpp"
#include "platform/x11/input_hub.hpp"
#include "platform/x11/x11_event_tap.hpp"

#include <algorithm>

namespace orvel::x11 {

std::vector<EssentialFinding> X11Essentials::check() {
    X11Session& session = hub_.session();
    if (!session.isAlive()) return {};
    const auto devices = listDevices(session, findMasters(session));
    const bool hasKeyboard = std::ranges::any_of(
        devices, [](const InputDevice& device) { return device.hasKeys && device.isEnabled; });
    // Input may have arrived together with the answers.
    hub_.wakeIfPending();
    return {{Essential::keyboard, hasKeyboard}, {Essential::keyboardControl, tap_.exists()}};
}

}  // namespace orvel::x11
