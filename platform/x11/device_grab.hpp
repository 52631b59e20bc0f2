#pragma once

#include "platform/x11/event_set.hpp"
#include "platform/x11/x11_session.hpp"

namespace orvel::x11 {

enum class GrabResult {
    taken,
    refused,  ///< another client holds the device
    gone,     ///< the device vanished meanwhile
};

/// Takes a device out of the session: its events come to this connection only, and the server
/// gives it back by itself when the connection ends.
[[nodiscard]] GrabResult grabDevice(X11Session& session, int device, EventSet& events);
void ungrabDevice(X11Session& session, int device);

}  // namespace orvel::x11
