#include "platform/x11/window_ping.hpp"

#include <algorithm>
#include <utility>

namespace orvel::x11 {

namespace {

constexpr Milliseconds kLimit{3000};

}  // namespace

WindowPing::WindowPing(ServiceConnection& server, std::function<void(Number)> answered)
    : server_(server) {
    // Toolkits send the answer as one kind of event or the other.
    server_.selectEvents(server_.root(),
                         XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    subscription_ = server_.onEvent(
        XCB_CLIENT_MESSAGE, [this, told = std::move(answered)](const xcb_generic_event_t& event) {
            const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
            if (message.window == server_.root() && message.type == server_.atom("WM_PROTOCOLS") &&
                message.data.data32[0] == server_.atom("_NET_WM_PING"))
                told(message.data.data32[1]);
        });
}

WindowPing::Understands WindowPing::understands(xcb_window_t window) {
    const auto protocols = server_.reply<xcb_get_property_reply_t>(
        xcb_get_property(server_.raw(), 0, window, server_.atom("WM_PROTOCOLS"), XCB_ATOM_ATOM, 0,
                         64),
        deadlineIn(kLimit));
    if (protocols == nullptr) return Understands::windowGone;
    const auto* first = static_cast<xcb_atom_t*>(xcb_get_property_value(protocols.get()));
    const auto count = protocols->format == 32 ? protocols->value_len : 0;
    const bool isListed =
        std::find(first, first + count, server_.atom("_NET_WM_PING")) != first + count;
    return isListed ? Understands::yes : Understands::no;
}

std::optional<xcb_window_t> WindowPing::parentOf(xcb_window_t window) {
    const auto tree = server_.reply<xcb_query_tree_reply_t>(xcb_query_tree(server_.raw(), window),
                                                            deadlineIn(kLimit));
    return tree == nullptr ? std::nullopt : std::optional(tree->parent);
}

WindowPing::Sent WindowPing::send(xcb_window_t window, Number& number) {
    // Toolkits give the keyboard to a window inside the one that understands.
    while (window != server_.root() && window != XCB_WINDOW_NONE) {
        const auto understood = understands(window);
        if (understood == Understands::windowGone) return Sent::windowGone;
        if (understood == Understands::yes) {
            ask(window, number = ++last_);
            return Sent::yes;
        }
        const auto parent = parentOf(window);
        if (!parent) return Sent::windowGone;
        window = *parent;
    }
    return Sent::notUnderstood;
}

void WindowPing::ask(xcb_window_t window, Number number) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = server_.atom("WM_PROTOCOLS");
    message.data.data32[0] = server_.atom("_NET_WM_PING");
    message.data.data32[1] = number;
    message.data.data32[2] = window;
    xcb_send_event(server_.raw(), 0, window, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&message));
    server_.flush();
}

}  // namespace orvel::x11
