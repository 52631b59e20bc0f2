#pragma once

#include <cstdint>
#include <string_view>

struct xcb_connection_t;

namespace orvel::x11 {

/// Qt's own connection to the X server; null where Qt runs without one. Needs a QGuiApplication.
/// Main thread, as is everything here, and waits for the answer.
[[nodiscard]] xcb_connection_t* serverOfQt();
/// Zero when the server is gone.
[[nodiscard]] std::uint32_t internAtom(xcb_connection_t* server, std::string_view name);
/// The window that owns a selection; zero when there is none.
[[nodiscard]] std::uint32_t selectionOwner(xcb_connection_t* server, std::uint32_t selection);

}  // namespace orvel::x11
