#include "tests/session/bus_mock.hpp"

#include "tools/rig/poll_until.hpp"
#include "tools/rig/rig_error.hpp"

namespace orvel::test {

namespace {

rig::Environment withSystemBus(const rig::SessionBus& bus) {
    auto environment = bus.environment();
    environment["DBUS_SYSTEM_BUS_ADDRESS"] = environment.at("DBUS_SESSION_BUS_ADDRESS");
    return environment;
}

}  // namespace

BusMock::BusMock(const rig::Environment& environment, const std::string& name)
    : bus_(environment, rig::SessionBus::Accessibility::off),
      environment_(withSystemBus(bus_)),
      // The distribution's own interpreter: it has the package.
      mock_({.arguments = {"/usr/bin/python3", "-u", "-m", "dbusmock", "--template", name},
             .environment = environment_}) {
    const auto isThere = [&] {
        try {
            rig::runTool(
                {"gdbus", "call", "--session", "--dest", "org.freedesktop.login1", "--object-path",
                 "/org/freedesktop/login1", "--method", "org.freedesktop.DBus.Peer.Ping"},
                environment_);
            return true;
        } catch (const rig::RigError&) {
            return false;
        }
    };
    if (!rig::pollUntil(isThere)) throw rig::RigError("no mock: " + mock_.err().text());
}

void BusMock::call(const std::string& service, const std::string& path, const std::string& method,
                   const std::vector<std::string>& arguments) {
    std::vector<std::string> command{"gdbus",         "call", "--session", "--dest", service,
                                     "--object-path", path,   "--method",  method};
    command.insert(command.end(), arguments.begin(), arguments.end());
    rig::runTool(command, environment_);
}

bool BusMock::wasCalled(const std::string& call) const {
    return mock_.out().waitForText(call, 0, std::chrono::milliseconds(3000)).has_value();
}

}  // namespace orvel::test
