#include "tools/rig/session_bus.hpp"

#include "tools/rig/rig_error.hpp"

namespace orvel::rig {
namespace {

constexpr const char* kAccessibilityLauncher = "/usr/libexec/at-spi-bus-launcher";

// Starts the service that hands out the accessibility bus's address and waits for the answer.
void askForAccessibilityBus(const Environment& environment) {
    const auto asked = pollUntil([&] {
        try {
            runTool({"gdbus", "call", "--session", "--dest", "org.a11y.Bus", "--object-path",
                     "/org/a11y/bus", "--method", "org.a11y.Bus.GetAddress"},
                    environment);
            return true;
        } catch (const RigError&) {
            return false;
        }
    });
    if (!asked) {
        throw RigError("the accessibility bus does not start");
    }
}

}  // namespace

SessionBus::SessionBus(const Environment& environment, Accessibility accessibility)
    : environment_(environment),
      daemon_({.arguments = {"dbus-daemon", "--session", "--nofork", "--print-address"},
               .environment = environment}) {
    const auto address = daemon_.out().waitForText("unix:");
    if (!address) {
        throw RigError("the message bus does not start: " + daemon_.err().text());
    }
    environment_["DBUS_SESSION_BUS_ADDRESS"] = *address;
    if (accessibility == Accessibility::on) {
        accessibility_ = std::make_unique<ChildProcess>(
            Command{.arguments = {kAccessibilityLauncher, "--launch-immediately"},
                    .environment = environment_});
        askForAccessibilityBus(environment_);
    }
}

}  // namespace orvel::rig
