#include "platform/x11/service_connection.hpp"

#include <xcb/xcbext.h>

#include <cstdlib>
#include <poll.h>
#include <utility>

namespace orvel::x11 {

namespace {

/// Another thread of the library may have taken our bytes off the socket: look again after this.
constexpr Milliseconds kLookAgain{20};

bool pollReadable(int fd, Milliseconds limit) {
    pollfd entry{fd, POLLIN, 0};
    return ::poll(&entry, 1, static_cast<int>(limit.count())) > 0;
}

}  // namespace

Milliseconds timeLeft(Deadline deadline) {
    const auto left = deadline - std::chrono::steady_clock::now();
    return std::max(std::chrono::ceil<Milliseconds>(left), Milliseconds::zero());
}

Result<std::unique_ptr<ServiceConnection>> ServiceConnection::open(const std::string& display) {
    int screenNumber = 0;
    xcb_connection_t* connection =
        xcb_connect(display.empty() ? nullptr : display.c_str(), &screenNumber);
    if (xcb_connection_has_error(connection) != 0) {
        xcb_disconnect(connection);
        return Failure{"cannot connect to the X server" +
                       (display.empty() ? std::string() : " " + display)};
    }
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screenNumber > 0 && screens.rem > 1; --screenNumber) xcb_screen_next(&screens);
    return std::unique_ptr<ServiceConnection>(new ServiceConnection(connection, screens.data));
}

ServiceConnection::ServiceConnection(xcb_connection_t* connection, xcb_screen_t* screen)
    : connection_(connection), screen_(screen) {}

ServiceConnection::~ServiceConnection() { xcb_disconnect(connection_); }

xcb_atom_t ServiceConnection::atom(std::string_view name) {
    const std::string key(name);
    if (const auto known = atoms_.find(key); known != atoms_.end()) return known->second;
    const auto cookie =
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const auto answer = reply<xcb_intern_atom_reply_t>(cookie);
    if (answer == nullptr) return XCB_ATOM_NONE;
    return atoms_[key] = answer->atom;
}

std::string ServiceConnection::atomName(xcb_atom_t atom) {
    const auto answer = reply<xcb_get_atom_name_reply_t>(xcb_get_atom_name(connection_, atom));
    if (answer == nullptr) return {};
    return {xcb_get_atom_name_name(answer.get()),
            static_cast<std::size_t>(xcb_get_atom_name_name_length(answer.get()))};
}

std::optional<std::uint8_t> ServiceConnection::extensionEvents(xcb_extension_t& extension) const {
    const auto* data = xcb_get_extension_data(connection_, &extension);
    if (data == nullptr || data->present == 0) return std::nullopt;
    return data->first_event;
}

void* ServiceConnection::waitFor(unsigned sequence, Deadline deadline) {
    xcb_flush(connection_);
    void* answer = nullptr;
    xcb_generic_error_t* error = nullptr;
    while (xcb_poll_for_reply(connection_, sequence, &answer, &error) == 0) {
        const auto left = timeLeft(deadline);
        if (left == Milliseconds::zero() || !isAlive()) {
            xcb_discard_reply(connection_, sequence);
            ++lateReplies_;
            break;
        }
        pollReadable(fd(), std::min(left, kLookAgain));
    }
    std::free(error);
    putEventsAside();
    // The sign that the server answers again may have been read together with this reply.
    if (!missed_.empty()) askForWake();
    return answer;
}

bool ServiceConnection::check(xcb_void_cookie_t cookie, Deadline deadline) {
    // A request without a reply shows its success by the reply of one sent after it.
    const auto barrier = xcb_get_input_focus(connection_);
    if (reply<xcb_get_input_focus_reply_t>(barrier, deadline) == nullptr) return false;
    const Reply<xcb_generic_error_t> error(xcb_request_check(connection_, cookie));
    return error == nullptr;
}

Subscription ServiceConnection::onEvent(std::uint8_t responseType, EventHandler handler) {
    const auto id = nextHandler_++;
    handlers_->push_back({responseType, id, std::make_shared<EventHandler>(std::move(handler))});
    return Subscription([weak = std::weak_ptr(handlers_), id] {
        const auto list = weak.lock();
        if (list == nullptr) return;
        for (auto& entry : *list) {
            if (entry.id == id) *entry.call = nullptr;
        }
        std::erase_if(*list, [id](const Handler& entry) { return entry.id == id; });
    });
}

xcb_window_t ServiceConnection::createHiddenWindow(xcb_window_class_t kind) {
    const xcb_window_t window = xcb_generate_id(connection_);
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window, root(), -1, -1, 1, 1, 0,
                      static_cast<std::uint16_t>(kind), XCB_COPY_FROM_PARENT, 0, nullptr);
    return window;
}

void ServiceConnection::selectEvents(xcb_window_t window, std::uint32_t bits) {
    auto& selected = selected_[window];
    if ((selected | bits) == selected) return;
    selected |= bits;
    xcb_change_window_attributes(connection_, window, XCB_CW_EVENT_MASK, &selected);
}

void ServiceConnection::deselectEvents(xcb_window_t window) {
    if (selected_.erase(window) == 0) return;
    const std::uint32_t none = XCB_EVENT_MASK_NO_EVENT;
    xcb_change_window_attributes(connection_, window, XCB_CW_EVENT_MASK, &none);
}

void ServiceConnection::dispatch() {
    hasAskedForWake_ = false;
    for (;;) {
        Reply<xcb_generic_event_t> event;
        if (aside_.empty()) {
            event.reset(xcb_poll_for_event(connection_));
        } else {
            event = std::move(aside_.front());
            aside_.pop_front();
        }
        if (event == nullptr) break;
        deliver(*event);
    }
    runMissed();
    xcb_flush(connection_);
    if (!isAlive() && lost_) std::exchange(lost_, nullptr)();
}

void ServiceConnection::setHooks(std::function<void()> wake, std::function<void()> lost) {
    wake_ = std::move(wake);
    lost_ = std::move(lost);
}

bool ServiceConnection::waitForEvent(Deadline deadline) {
    xcb_flush(connection_);
    const auto before = aside_.size();
    for (;;) {
        if (auto* event = xcb_poll_for_event(connection_)) aside_.emplace_back(event);
        putEventsAside();
        if (aside_.size() > before) return true;
        const auto left = timeLeft(deadline);
        if (left == Milliseconds::zero() || !isAlive()) return false;
        pollReadable(fd(), left);
    }
}

void ServiceConnection::onceAnswering(std::function<void()> task) {
    if (missed_.empty()) sign_ = xcb_get_input_focus(connection_).sequence;
    missed_.push_back(std::move(task));
    xcb_flush(connection_);
}

void ServiceConnection::runMissed() {
    if (missed_.empty()) return;
    void* answer = nullptr;
    xcb_generic_error_t* error = nullptr;
    if (xcb_poll_for_reply(connection_, sign_, &answer, &error) != 0) {
        std::free(answer);
        std::free(error);
        for (const auto& task : std::exchange(missed_, {})) task();
    }
    putEventsAside();
}

void ServiceConnection::putEventsAside() {
    while (auto* event = xcb_poll_for_queued_event(connection_)) aside_.emplace_back(event);
    if (!aside_.empty()) askForWake();
}

void ServiceConnection::askForWake() {
    if (!wake_ || std::exchange(hasAskedForWake_, true)) return;
    wake_();
}

void ServiceConnection::deliver(const xcb_generic_event_t& event) {
    const auto type = static_cast<std::uint8_t>(event.response_type & 0x7f);
    if (type == XCB_DESTROY_NOTIFY)
        selected_.erase(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window);
    const auto current = *handlers_;
    for (const auto& handler : current) {
        if (handler.responseType != type) continue;
        if (const auto call = *handler.call) call(event);
    }
}

}  // namespace orvel::x11
