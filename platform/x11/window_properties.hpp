#pragma once

#include "platform/x11/service_connection.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orvel::x11 {

/// A property that was asked for and may not have arrived yet. Ask for all first, then take: the
/// answers of many windows cost one round trip.
struct PendingProperty {
    xcb_get_property_cookie_t cookie{};
};

/// What a taken property held.
struct PropertyValue {
    xcb_atom_t type = XCB_ATOM_NONE;
    std::uint8_t format = 0;
    std::vector<std::uint8_t> bytes;
};

PendingProperty askProperty(ServiceConnection& server, xcb_window_t window, xcb_atom_t property);

/// Absent when the window has no such property, is gone, or the answer came too late.
std::optional<PropertyValue> takeProperty(ServiceConnection& server, PendingProperty pending,
                                          Deadline deadline);
/// Its numbers; empty when it is not of format 32.
std::vector<std::uint32_t> cardinalsIn(const PropertyValue& value);
/// Values of a property of format 32; empty when there is none.
std::vector<std::uint32_t> takeCardinals(ServiceConnection& server, PendingProperty pending,
                                         Deadline deadline);
/// A text property as UTF-8, whatever encoding its type names.
std::optional<std::string> takeText(ServiceConnection& server, PendingProperty pending,
                                    Deadline deadline);

/// Asks and takes at once.
std::vector<std::uint32_t> cardinals(ServiceConnection& server, xcb_window_t window,
                                     std::string_view property,
                                     Deadline deadline = deadlineIn(kServerLimit));
std::optional<std::string> text(ServiceConnection& server, xcb_window_t window,
                                std::string_view property,
                                Deadline deadline = deadlineIn(kServerLimit));

/// Sends a client message about `window` to the window manager.
void tellWindowManager(ServiceConnection& server, xcb_window_t window, std::string_view message,
                       std::initializer_list<std::uint32_t> data);

/// Bytes of an old text property as UTF-8: valid UTF-8 stays, anything else is Latin-1.
std::string toUtf8(std::string_view bytes);

}  // namespace orvel::x11
