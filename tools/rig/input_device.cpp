#include "tools/rig/input_device.hpp"

#include "tools/rig/poll_until.hpp"
#include "tools/rig/rig_error.hpp"

#include <X11/Xatom.h>
#include <X11/extensions/XInput2.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <utility>
#include <xorg/xf86-input-inputtest-protocol.h>

namespace orvel::rig {
namespace {

constexpr double kScrollPerNotch = 120;
constexpr int kMotionAxis = 0;
constexpr int kScrollAxis = 2;  // horizontal; the vertical one follows

template <class Message>
Message message(xf86ITEventType type) {
    Message made{};
    made.header = {sizeof made, type};
    return made;
}

UniqueFd connectTo(const std::filesystem::path& socket) {
    UniqueFd fd(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    socket.string().copy(address.sun_path, sizeof address.sun_path - 1);
    const auto* plain = reinterpret_cast<const sockaddr*>(&address);
    if (!fd.valid() || ::connect(fd.get(), plain, sizeof address) != 0) {
        return {};
    }
    return fd;
}

}  // namespace

InputDevice::InputDevice(std::string name, std::filesystem::path socket, XConnection& x)
    : name_(std::move(name)), socket_(std::move(socket)), x_(x), id_(x.deviceId(name_)) {
    connect();
}

void InputDevice::unplug() {
    barrier();
    setEnabled(false);
    connection_.reset();
}

void InputDevice::plug() {
    setEnabled(true);
    connect();
}

void InputDevice::connect() {
    connection_ = pollUntil([this] { return connectTo(socket_); },
                            [](const UniqueFd& fd) { return fd.valid(); })
                      .last;
    if (!connection_.valid()) {
        throw RigError("cannot connect to input device " + name_);
    }
    auto version = message<xf86ITEventClientVersion>(XF86IT_EVENT_CLIENT_VERSION);
    version.major = XF86IT_PROTOCOL_VERSION_MAJOR;
    version.minor = XF86IT_PROTOCOL_VERSION_MINOR;
    send(version);
    xf86ITResponseServerVersion answer{};
    receiveBytes(&answer, sizeof answer);
}

void InputDevice::setEnabled(bool enabled) {
    unsigned char value = enabled ? 1 : 0;
    const bool switched = x_.succeeds([&] {
        XIChangeProperty(x_.get(), id_, x_.atom("Device Enabled"), XA_INTEGER, 8, PropModeReplace,
                         &value, 1);
    });
    if (!switched) {
        throw RigError("cannot switch input device " + name_);
    }
}

void InputDevice::barrier() {
    // The server answers after the next input, so there must be one.
    if (!std::exchange(isUnprocessed_, false)) return;
    send(message<xf86ITEventWaitForSync>(XF86IT_EVENT_WAIT_FOR_SYNC));
    xf86ITResponseSyncFinished answer{};
    receiveBytes(&answer, sizeof answer);
}

void InputDevice::sendBytes(const void* bytes, std::size_t size) {
    if (!plugged()) {
        throw RigError("input device " + name_ + " is not plugged in");
    }
    const auto sent = ::send(connection_.get(), bytes, size, MSG_NOSIGNAL);
    if (sent != static_cast<ssize_t>(size)) {
        failWithErrno("cannot write to input device " + name_);
    }
}

void InputDevice::receiveBytes(void* bytes, std::size_t size) {
    pollfd wait{connection_.get(), POLLIN, 0};
    if (poll(&wait, 1, static_cast<int>(kPatience.count())) <= 0 ||
        recv(connection_.get(), bytes, size, MSG_WAITALL) != static_cast<ssize_t>(size)) {
        throw RigError("input device " + name_ + " does not answer");
    }
}

void Keyboard::press(PhysicalKey key) {
    sendKey(key, true);
    barrier();
}

void Keyboard::release(PhysicalKey key) {
    sendKey(key, false);
    barrier();
}

void Keyboard::tap(PhysicalKey key) {
    sendKey(key, true);
    sendKey(key, false);
    barrier();
}

void Keyboard::chord(std::initializer_list<PhysicalKey> keys) {
    for (const PhysicalKey key : keys) {
        sendKey(key, true);
    }
    for (auto key = std::rbegin(keys); key != std::rend(keys); ++key) {
        sendKey(*key, false);
    }
    barrier();
}

void Keyboard::type(std::string_view text) { play(strokesFor(text)); }

void Keyboard::play(std::span<const KeyStroke> strokes) {
    // The server's input queue is bounded and drops what does not fit.
    constexpr std::size_t kStrokesPerBarrier = 32;
    for (std::size_t at = 0; at < strokes.size(); ++at) {
        sendKey(strokes[at].key, strokes[at].down);
        if (at % kStrokesPerBarrier == kStrokesPerBarrier - 1) {
            barrier();
        }
    }
    barrier();
}

void Keyboard::sendKey(PhysicalKey key, bool down) {
    auto event = message<xf86ITEventKey>(XF86IT_EVENT_KEY);
    event.key_code = key.code;
    event.is_press = down ? 1 : 0;
    sendInput(event);
}

void Pointer::press(Button button) {
    sendButton(static_cast<int>(button), true);
    barrier();
}

void Pointer::release(Button button) {
    sendButton(static_cast<int>(button), false);
    barrier();
}

void Pointer::click(Button button) {
    sendButton(static_cast<int>(button), true);
    sendButton(static_cast<int>(button), false);
    barrier();
}

void Pointer::move(double dx, double dy) {
    sendMotion(kMotionAxis, dx, dy);
    barrier();
}

void Pointer::turnWheelAsButtons(int down, int right) {
    const auto turn = [this](int notches, int negative, int positive) {
        for (int notch = 0; notch < std::abs(notches); ++notch) {
            sendButton(notches < 0 ? negative : positive, true);
            sendButton(notches < 0 ? negative : positive, false);
        }
    };
    turn(down, 4, 5);
    turn(right, 6, 7);
    barrier();
}

void Pointer::turnWheel(int down, int right) {
    const int steps = std::max(std::abs(down), std::abs(right));
    for (int step = 0; step < steps; ++step) {
        const auto notch = [step](int notches) {
            return step < std::abs(notches) ? (notches < 0 ? -1 : 1) : 0;
        };
        sendMotion(kScrollAxis, notch(right) * kScrollPerNotch, notch(down) * kScrollPerNotch);
    }
    barrier();
}

void Pointer::scroll(double down, double right) {
    sendMotion(kScrollAxis, right * kScrollPerNotch, down * kScrollPerNotch);
    barrier();
}

void Pointer::sendButton(int button, bool down) {
    auto event = message<xf86ITEventButton>(XF86IT_EVENT_BUTTON);
    event.button = button;
    event.is_press = down ? 1 : 0;
    sendInput(event);
}

void Pointer::sendMotion(int firstAxis, double first, double second) {
    if (first == 0 && second == 0) return;
    auto event = message<xf86ITEventMotion>(XF86IT_EVENT_MOTION);
    event.valuators.has_unaccelerated = 1;
    const auto set = [&event](int axis, double distance) {
        if (distance == 0) {
            return;
        }
        event.valuators.mask[axis / 8] |= static_cast<std::uint8_t>(1U << (axis % 8));
        event.valuators.valuators[axis] = distance;
        event.valuators.unaccelerated[axis] = distance;
    };
    set(firstAxis, first);
    set(firstAxis + 1, second);
    sendInput(event);
}

}  // namespace orvel::rig
