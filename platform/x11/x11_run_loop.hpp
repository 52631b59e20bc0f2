#pragma once

#include "platform/qt/qt_run_loop.hpp"

#include <memory>

class QCoreApplication;

namespace orvel::x11 {

/// The run loop of an X11 session: Qt's, since Qt's windows live in it. One per process, made on
/// the main thread; `argc` and `argv` stay valid while it lives. An application object of Qt that
/// is there already is used.
class X11RunLoop {
public:
    X11RunLoop(int& argc, char** argv);
    ~X11RunLoop();
    X11RunLoop(const X11RunLoop&) = delete;
    X11RunLoop& operator=(const X11RunLoop&) = delete;

    [[nodiscard]] qt::QtRunLoop& get() { return *loop_; }

private:
    std::unique_ptr<QCoreApplication> application_;
    std::unique_ptr<qt::QtRunLoop> loop_;
};

}  // namespace orvel::x11
