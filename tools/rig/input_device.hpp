#pragma once

#include "tools/rig/physical_key.hpp"
#include "tools/rig/unique_fd.hpp"
#include "tools/rig/x_connection.hpp"

#include <filesystem>
#include <span>
#include <string>
#include <string_view>

namespace orvel::rig {

/// A test input device of the server, as real to it as one with a cable. Every call returns
/// only after the server has processed what it sent; the clients may still have it to read.
///
/// The server allows one connection per device and spins when that one goes away, so it is
/// held for as long as the device is plugged in.
class InputDevice {
public:
    InputDevice(std::string name, std::filesystem::path socket, XConnection& x);

    const std::string& name() const { return name_; }
    /// The server's number of the device.
    int id() const { return id_; }

    /// Takes the device away in the way the server does when its cable is pulled: keys that are
    /// down come up.
    void unplug();
    void plug();
    bool plugged() const { return connection_.valid(); }

protected:
    template <class Message>
    void sendInput(const Message& message) {
        send(message);
        isUnprocessed_ = true;
    }
    /// Returns when the server has processed everything sent before.
    void barrier();

private:
    template <class Message>
    void send(const Message& message) {
        sendBytes(&message, sizeof message);
    }
    void connect();
    void setEnabled(bool enabled);
    void sendBytes(const void* bytes, std::size_t size);
    void receiveBytes(void* bytes, std::size_t size);

    std::string name_;
    std::filesystem::path socket_;
    XConnection& x_;
    int id_;
    UniqueFd connection_;
    bool isUnprocessed_ = false;
};

class Keyboard : public InputDevice {
public:
    using InputDevice::InputDevice;

    void press(PhysicalKey key);
    void release(PhysicalKey key);
    void tap(PhysicalKey key);
    /// Presses the keys in this order and releases them in the opposite one: {"Control_L", "c"}.
    void chord(std::initializer_list<PhysicalKey> keys);
    void type(std::string_view text);
    /// Plays the strokes as fast as the server takes them.
    void play(std::span<const KeyStroke> strokes);

private:
    void sendKey(PhysicalKey key, bool down);
};

enum class Button { left = 1, middle = 2, right = 3, back = 8, forward = 9 };

class Pointer : public InputDevice {
public:
    using InputDevice::InputDevice;

    void press(Button button);
    void release(Button button);
    void click(Button button);

    /// Moves by this many pixels, right and down.
    void move(double dx, double dy);

    /// Turns the wheel by whole notches (down and right positive) in the way of a driver that
    /// knows wheels as buttons only.
    void turnWheelAsButtons(int down, int right = 0);
    /// Turns the wheel by whole notches in the way of libinput: scroll distance, from which the
    /// server derives the buttons.
    void turnWheel(int down, int right = 0);
    /// Scrolls by any part of a notch, as a touchpad or a high-resolution wheel does.
    void scroll(double down, double right = 0);

private:
    void sendButton(int button, bool down);
    void sendMotion(int firstAxis, double first, double second);
};

}  // namespace orvel::rig
