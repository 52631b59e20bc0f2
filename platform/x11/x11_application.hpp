#pragma once

#include <memory>

class QApplication;

namespace orvel::x11 {

/// Qt's application object, set up for panels. Made before the run loop. When the X server is gone
/// Qt would end the process by itself: it ends with `goneStatus` and a line that says so.
class X11Application {
public:
    X11Application(int& argc, char** argv, int goneStatus);
    ~X11Application();
    X11Application(const X11Application&) = delete;
    X11Application& operator=(const X11Application&) = delete;

    /// Says it once, however many notice.
    static void sayServerGone();

private:
    std::unique_ptr<QApplication> application_;
};

}  // namespace orvel::x11
