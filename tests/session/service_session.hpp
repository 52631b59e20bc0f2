#pragma once

#include "platform/qt/qt_run_loop.hpp"
#include "platform/x11/x11_services.hpp"
#include "tests/session/session_test.hpp"
#include "tests/support/poll_until.hpp"
#include "tools/rig/plain_windows.hpp"

#include <QCoreApplication>

#include <memory>
#include <string>
#include <utility>

namespace orvel::test {

/// The services opened in an embedded desktop, with what the desktop tells handled as the
/// program's loop would.
class OpenServices {
public:
    explicit OpenServices(rig::EmbeddedDesktop& desktop, x11::ServiceOptions options = {}) {
        options.display = desktop.server().display();
        auto opened = x11::X11Services::open(runLoop_, options);
        EXPECT_TRUE(opened) << opened.error();
        services_ = std::move(opened).value();
    }

    x11::X11Services* operator->() { return services_.get(); }
    x11::X11Services& get() { return *services_; }
    qt::QtRunLoop& runLoop() { return runLoop_; }
    /// Handles everything that has arrived until now.
    void settle() {
        QCoreApplication::processEvents();
        services_->catchUp();
    }

private:
    qt::QtRunLoop runLoop_;
    std::unique_ptr<x11::X11Services> services_;
};

/// Success as soon as what `probe` returns matches; what the desktop tells meanwhile is handled.
template <class Probe, class Matcher>
testing::AssertionResult eventually(OpenServices& services, Probe probe, Matcher matcher,
                                    std::chrono::milliseconds limit = rig::kPatience) {
    return eventually(
        [&] {
            services.settle();
            return probe();
        },
        matcher, limit);
}

}  // namespace orvel::test
