#pragma once

#include "tools/rig/embedded_desktop.hpp"

#include <gtest/gtest.h>

#include <memory>

namespace orvel::test {

/// A test inside a real X session. The desktop is started once per suite; each test finds the
/// keyboard as an ordinary one, and fails when it leaves a key down.
class SessionTest : public testing::Test {
protected:
    static void SetUpTestSuite() { sharedDesktop = std::make_unique<rig::EmbeddedDesktop>(); }
    static void TearDownTestSuite() { sharedDesktop.reset(); }
    void TearDown() override;

    /// For suites that need another desktop than the usual one.
    static void startDesktop(const rig::EmbeddedDesktop::Options& options) {
        sharedDesktop = std::make_unique<rig::EmbeddedDesktop>(options);
    }
    static rig::EmbeddedDesktop& desktop() { return *sharedDesktop; }
    static rig::Keyboard& keyboard() { return sharedDesktop->keyboard(); }
    static rig::Keyboard& secondKeyboard() { return sharedDesktop->server().secondKeyboard(); }
    static rig::Pointer& mouse() { return sharedDesktop->mouse(); }
    static rig::Pointer& touchpad() { return sharedDesktop->server().touchpad(); }
    static rig::ScreenState& state() { return sharedDesktop->state(); }

private:
    static inline std::unique_ptr<rig::EmbeddedDesktop> sharedDesktop;
};

}  // namespace orvel::test
