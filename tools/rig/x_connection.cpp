#include "tools/rig/x_connection.hpp"

#include "tools/rig/rig_error.hpp"

#include <X11/Xlib.h>
#include <X11/extensions/XInput2.h>

#include <atomic>
#include <mutex>

namespace orvel::rig {
namespace {

std::atomic<int>& errorCount() {
    static std::atomic<int> count{0};
    return count;
}

int countError(Display*, XErrorEvent*) {
    ++errorCount();
    return 0;
}

}  // namespace

XConnection::XConnection(const std::string& display) {
    static std::once_flag once;
    std::call_once(once, [] { XSetErrorHandler(countError); });
    display_ = XOpenDisplay(display.c_str());
    if (display_ == nullptr) {
        throw RigError("cannot connect to display " + display);
    }
    int major = 2;
    int minor = 3;
    if (XIQueryVersion(display_, &major, &minor) != Success) {
        throw RigError("display " + display + " has no X input extension 2");
    }
}

XConnection::~XConnection() { XCloseDisplay(display_); }

WindowId XConnection::root() const { return DefaultRootWindow(display_); }

unsigned long XConnection::atom(const char* name) const {
    return XInternAtom(display_, name, False);
}

void XConnection::sync() { XSync(display_, False); }

bool XConnection::succeeds(const std::function<void()>& requests) {
    sync();
    const int before = errorCount();
    requests();
    sync();
    return errorCount() == before;
}

std::vector<DeviceInfo> XConnection::devices() const {
    int count = 0;
    XIDeviceInfo* list = XIQueryDevice(display_, XIAllDevices, &count);
    std::vector<DeviceInfo> found;
    for (int at = 0; at < count; ++at) {
        const XIDeviceInfo& device = list[at];
        bool keys = false;
        for (int part = 0; part < device.num_classes; ++part) {
            keys = keys || device.classes[part]->type == XIKeyClass;
        }
        found.push_back({device.deviceid, device.name, keys, device.enabled != 0});
    }
    XIFreeDeviceInfo(list);
    return found;
}

int XConnection::deviceId(const std::string& name) const {
    for (const DeviceInfo& device : devices()) {
        if (device.name == name) {
            return device.id;
        }
    }
    throw RigError("the server has no device " + name);
}

ServerGrab::ServerGrab(XConnection& x) : x_(x) {
    XGrabServer(x_.get());
    x_.sync();
}

ServerGrab::~ServerGrab() {
    XUngrabServer(x_.get());
    x_.sync();
}

}  // namespace orvel::rig
