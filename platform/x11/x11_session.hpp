#pragma once

#include "platform/base/result.hpp"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

struct _XDisplay;

namespace orvel::x11 {

/// One connection to an X server with the extensions that every service here needs. Each
/// connection belongs to one thread. Errors that no `ErrorTrap` waits for are dropped: windows
/// and devices of others may vanish at any moment.
class X11Session {
public:
    /// Connects to `displayName`, or to $DISPLAY when empty. The failure names the display or the
    /// extension that is missing.
    static Result<std::unique_ptr<X11Session>> open(const std::string& displayName = {});
    ~X11Session();
    X11Session(const X11Session&) = delete;
    X11Session& operator=(const X11Session&) = delete;

    [[nodiscard]] _XDisplay* display() const { return display_; }
    /// The root window of the default screen.
    [[nodiscard]] unsigned long root() const { return root_; }
    [[nodiscard]] int fileDescriptor() const;
    /// The atom of that name, made when the server does not know it yet. Asked for once only.
    [[nodiscard]] unsigned long atom(std::string_view name);

    /// Major opcode of the input extension, by which its events are known.
    [[nodiscard]] int inputOpcode() const { return inputOpcode_; }
    /// Event type of the keyboard extension.
    [[nodiscard]] int keyboardEventType() const { return keyboardEventType_; }

    /// False once the server closed the connection; no request may be made then.
    [[nodiscard]] bool isAlive() const { return alive_; }
    /// Called once, on the thread that noticed, when the server closes the connection.
    void onLost(std::function<void()> lost) { lost_ = std::move(lost); }

private:
    explicit X11Session(_XDisplay* display);
    Result<> initialise();
    static void connectionLost(_XDisplay* display, void* session);

    _XDisplay* display_;
    unsigned long root_;
    int inputOpcode_ = 0;
    int keyboardEventType_ = 0;
    bool alive_ = true;
    std::function<void()> lost_;
    std::map<std::string, unsigned long, std::less<>> atoms_;
};

/// Collects the errors of the requests made on one connection while it lives. Traps nest.
class ErrorTrap {
public:
    explicit ErrorTrap(X11Session& session);
    ~ErrorTrap();
    ErrorTrap(const ErrorTrap&) = delete;
    ErrorTrap& operator=(const ErrorTrap&) = delete;

    /// Waits for the server to answer everything asked so far; the code of the first error of
    /// these requests, 0 when there was none.
    [[nodiscard]] int firstError();

private:
    X11Session& session_;
};

}  // namespace orvel::x11
