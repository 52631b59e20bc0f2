#pragma once

#include "tools/rig/scratch_home.hpp"

#include <cstdlib>
#include <optional>
#include <string>

namespace orvel::test {

/// A home folder for this very process, before any library has looked for one. Made first in
/// `main`, it lives as long as the process.
class OwnHome {
public:
    OwnHome() {
        for (const auto& [name, value] : home_.environment())
            ::setenv(name.c_str(), value.c_str(), 1);
        for (const auto* name : {"DBUS_SESSION_BUS_ADDRESS", "DBUS_SYSTEM_BUS_ADDRESS", "DISPLAY"})
            ::unsetenv(name);
        current = &home_;
    }
    ~OwnHome() { current = nullptr; }
    OwnHome(const OwnHome&) = delete;
    OwnHome& operator=(const OwnHome&) = delete;

    static rig::ScratchHome& get() { return *current; }

private:
    rig::ScratchHome home_;
    static inline rig::ScratchHome* current = nullptr;
};

/// Sets a variable of this process until the end of the scope.
class ScopedVariable {
public:
    ScopedVariable(std::string name, const std::string& value) : name_(std::move(name)) {
        if (const char* before = std::getenv(name_.c_str())) before_ = before;
        ::setenv(name_.c_str(), value.c_str(), 1);
    }
    ~ScopedVariable() {
        before_ ? ::setenv(name_.c_str(), before_->c_str(), 1) : ::unsetenv(name_.c_str());
    }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

private:
    std::string name_;
    std::optional<std::string> before_;
};

}  // namespace orvel::test
