#pragma once

#include <functional>
#include <string>
#include <vector>

// Xlib's own header defines macros such as None and Success, which no test could bear.
struct _XDisplay;

namespace orvel::rig {

/// An X window's number.
using WindowId = unsigned long;

/// A device as the server lists it.
struct DeviceInfo {
    int id;
    std::string name;
    bool keyboard;
    bool enabled;
};

/// Our own client connection to a display. X errors do not end the process.
class XConnection {
public:
    explicit XConnection(const std::string& display);
    ~XConnection();
    XConnection(const XConnection&) = delete;
    XConnection& operator=(const XConnection&) = delete;

    _XDisplay* get() const { return display_; }
    WindowId root() const;
    unsigned long atom(const char* name) const;
    /// Waits until the server has answered everything.
    void sync();
    /// Runs the requests and waits for their answers; false when one was an error.
    bool succeeds(const std::function<void()>& requests);

    /// Every device with its masters, the server's own ones included.
    std::vector<DeviceInfo> devices() const;
    /// The id of the device of this name; a RigError when there is none.
    int deviceId(const std::string& name) const;

private:
    _XDisplay* display_;
};

/// Keeps the server from everybody else while it lives. Input goes on meanwhile.
class ServerGrab {
public:
    explicit ServerGrab(XConnection& x);
    ~ServerGrab();
    ServerGrab(const ServerGrab&) = delete;
    ServerGrab& operator=(const ServerGrab&) = delete;

private:
    XConnection& x_;
};

}  // namespace orvel::rig
