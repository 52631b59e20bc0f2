#pragma once

#include "tools/rig/child_process.hpp"
#include "tools/rig/session_bus.hpp"

#include <string>
#include <vector>

namespace orvel::test {

/// A service of the system that python-dbusmock plays, on a bus of its own.
class BusMock {
public:
    /// `template`: one of dbusmock's own, such as "logind".
    BusMock(const rig::Environment& environment, const std::string& name);

    [[nodiscard]] std::string busAddress() const {
        return bus_.environment().at("DBUS_SESSION_BUS_ADDRESS");
    }
    /// Calls a method of the mock; arguments in the notation of gdbus.
    void call(const std::string& service, const std::string& path, const std::string& method,
              const std::vector<std::string>& arguments);
    /// Waits for a call that was made to the mock, such as "Suspend True".
    [[nodiscard]] bool wasCalled(const std::string& call) const;
    [[nodiscard]] std::string calls() const { return mock_.out().text(); }

private:
    rig::SessionBus bus_;
    rig::Environment environment_;
    mutable rig::ChildProcess mock_;
};

}  // namespace orvel::test
