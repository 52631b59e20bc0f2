#include "platform/x11/device_grab.hpp"

#include <X11/Xlib.h>

namespace orvel::x11 {

GrabResult grabDevice(X11Session& session, int device, EventSet& events) {
    ErrorTrap trap(session);
    const int status = XIGrabDevice(session.display(), device, session.root(), CurrentTime, None,
                                    XIGrabModeAsync, XIGrabModeAsync, False, events.mask());
    if (trap.firstError() != 0) return GrabResult::gone;
    return status == XIGrabSuccess ? GrabResult::taken : GrabResult::refused;
}

void ungrabDevice(X11Session& session, int device) {
    if (!session.isAlive()) return;
    const ErrorTrap trap(session);
    XIUngrabDevice(session.display(), device, CurrentTime);
}

}  // namespace orvel::x11
