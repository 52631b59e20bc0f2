#include "platform/x11/window_properties.hpp"

#include "platform/base/utf8.hpp"
#include "platform/x11/text_encoding.hpp"

#include <algorithm>
#include <cstring>

namespace orvel::x11 {

namespace {

/// In units of four bytes: far above any honest title or list, and a bound for the others.
constexpr std::uint32_t kLongestProperty = 1U << 20U;

}  // namespace

PendingProperty askProperty(ServiceConnection& server, xcb_window_t window, xcb_atom_t property) {
    return {xcb_get_property(server.raw(), 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0,
                             kLongestProperty)};
}

std::optional<PropertyValue> takeProperty(ServiceConnection& server, PendingProperty pending,
                                          Deadline deadline) {
    const auto answer = server.reply<xcb_get_property_reply_t>(pending.cookie, deadline);
    if (answer == nullptr || answer->type == XCB_ATOM_NONE) return std::nullopt;
    const auto* begin = static_cast<const std::uint8_t*>(xcb_get_property_value(answer.get()));
    const auto size = static_cast<std::size_t>(xcb_get_property_value_length(answer.get()));
    return PropertyValue{answer->type, answer->format, {begin, begin + size}};
}

std::vector<std::uint32_t> cardinalsIn(const PropertyValue& value) {
    if (value.format != 32) return {};
    std::vector<std::uint32_t> numbers(value.bytes.size() / sizeof(std::uint32_t));
    if (!numbers.empty())
        std::memcpy(numbers.data(), value.bytes.data(), numbers.size() * sizeof(std::uint32_t));
    return numbers;
}

std::vector<std::uint32_t> takeCardinals(ServiceConnection& server, PendingProperty pending,
                                         Deadline deadline) {
    const auto value = takeProperty(server, pending, deadline);
    return value ? cardinalsIn(*value) : std::vector<std::uint32_t>{};
}

std::optional<std::string> takeText(ServiceConnection& server, PendingProperty pending,
                                    Deadline deadline) {
    const auto value = takeProperty(server, pending, deadline);
    if (!value || value->format != 8) return std::nullopt;
    return toUtf8({reinterpret_cast<const char*>(value->bytes.data()), value->bytes.size()});
}

std::vector<std::uint32_t> cardinals(ServiceConnection& server, xcb_window_t window,
                                     std::string_view property, Deadline deadline) {
    return takeCardinals(server, askProperty(server, window, server.atom(property)), deadline);
}

std::optional<std::string> text(ServiceConnection& server, xcb_window_t window,
                                std::string_view property, Deadline deadline) {
    return takeText(server, askProperty(server, window, server.atom(property)), deadline);
}

void tellWindowManager(ServiceConnection& server, xcb_window_t window, std::string_view message,
                       std::initializer_list<std::uint32_t> data) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = server.atom(message);
    std::copy_n(data.begin(), std::min<std::size_t>(data.size(), 5), event.data.data32);
    xcb_send_event(server.raw(), 0, server.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&event));
    server.flush();
}

std::string toUtf8(std::string_view bytes) {
    return isUtf8(bytes) ? std::string(bytes) : utf8FromLatin1(bytes);
}

}  // namespace orvel::x11
