// A screen locker as small as they come: it covers the screen, grabs keyboard and pointer, and
// collects what is typed until Return.
//
//   orvel-rig-screen-locker
//
// Prints "locked" when both grabs hold and "typed TEXT" at each Return. "unlock" on standard
// input, or its end, gives everything back.

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <array>
#include <iostream>
#include <memory>
#include <poll.h>
#include <string>
#include <unistd.h>

namespace {

class ScreenLocker {
public:
    ScreenLocker() : display_(XOpenDisplay(nullptr), XCloseDisplay) {}

    bool lock() {
        if (!display_) {
            return false;
        }
        const int screen = DefaultScreen(display_.get());
        XSetWindowAttributes attributes{};
        attributes.override_redirect = True;
        attributes.background_pixel = BlackPixel(display_.get(), screen);
        attributes.event_mask = KeyPressMask;
        window_ = XCreateWindow(display_.get(), RootWindow(display_.get(), screen), 0, 0,
                                static_cast<unsigned>(DisplayWidth(display_.get(), screen)),
                                static_cast<unsigned>(DisplayHeight(display_.get(), screen)), 0,
                                CopyFromParent, InputOutput, CopyFromParent,
                                CWOverrideRedirect | CWBackPixel | CWEventMask, &attributes);
        XMapRaised(display_.get(), window_);
        // The pointer can be grabbed only by a window that shows; the reply to this says it does.
        XSync(display_.get(), False);
        return XGrabKeyboard(display_.get(), window_, True, GrabModeAsync, GrabModeAsync,
                             CurrentTime) == GrabSuccess &&
               XGrabPointer(display_.get(), window_, True, ButtonPressMask, GrabModeAsync,
                            GrabModeAsync, None, None, CurrentTime) == GrabSuccess;
    }

    void run() {
        std::array<pollfd, 2> waits{
            {{ConnectionNumber(display_.get()), POLLIN, 0}, {STDIN_FILENO, POLLIN, 0}}};
        while (waits[1].revents == 0) {
            readKeys();
            if (poll(waits.data(), waits.size(), -1) < 0) {
                return;
            }
        }
    }

private:
    void readKeys() {
        while (XPending(display_.get()) > 0) {
            XEvent event;
            XNextEvent(display_.get(), &event);
            if (event.type == KeyPress) {
                addKey(event.xkey);
            }
        }
    }

    void addKey(XKeyEvent& event) {
        std::array<char, 16> text{};
        KeySym keysym = NoSymbol;
        const int length =
            XLookupString(&event, text.data(), static_cast<int>(text.size()), &keysym, nullptr);
        if (keysym == XK_Return) {
            std::cout << "typed " << typed_ << std::endl;
            typed_.clear();
        } else if (keysym == XK_BackSpace && !typed_.empty()) {
            typed_.pop_back();
        } else {
            typed_.append(text.data(), static_cast<std::size_t>(length));
        }
    }

    std::unique_ptr<Display, decltype(&XCloseDisplay)> display_;
    Window window_ = None;
    std::string typed_;
};

}  // namespace

int main() {
    ScreenLocker locker;
    if (!locker.lock()) {
        std::cerr << "cannot grab keyboard and pointer\n";
        return 1;
    }
    std::cout << "locked" << std::endl;
    locker.run();
    return 0;
}
