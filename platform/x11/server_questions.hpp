#pragma once

#include <cstdint>
#include <string_view>

struct xcb_connection_t;

namespace orvel::x11 {

// What the shell asks the X server, waiting for the answer, on the connection of Qt or on another.
// Main thread.

/// Qt's own connection; null where Qt runs without an X server. Needs a QGuiApplication.
[[nodiscard]] xcb_connection_t* serverOfQt();
/// Zero when the server is gone.
[[nodiscard]] std::uint32_t internAtom(xcb_connection_t* server, std::string_view name);
/// The window that owns a selection; zero when there is none.
[[nodiscard]] std::uint32_t selectionOwner(xcb_connection_t* server, std::uint32_t selection);

}  // namespace orvel::x11
