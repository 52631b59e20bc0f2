#pragma once

#include "tools/rig/embedded_desktop.hpp"

#include <cstdlib>

namespace orvel::test {

/// The embedded desktop in which this very process shows its windows. Made in `main` before Qt's
/// application object.
class ShellDesktop {
public:
    ShellDesktop() {
        for (const auto& [name, value] : desktop_.environment())
            ::setenv(name.c_str(), value.c_str(), 1);
        // The library chooses once for the whole process where settings lie: in this home.
        ::setenv("GSETTINGS_BACKEND", "keyfile", 1);
        current = &desktop_;
    }
    ~ShellDesktop() { current = nullptr; }
    ShellDesktop(const ShellDesktop&) = delete;
    ShellDesktop& operator=(const ShellDesktop&) = delete;

    static rig::EmbeddedDesktop& get() { return *current; }

private:
    rig::EmbeddedDesktop desktop_;
    static inline rig::EmbeddedDesktop* current = nullptr;
};

}  // namespace orvel::test
