#include "platform/x11/x11_caps_lock.hpp"

#include <X11/XKBlib.h>
#include <X11/Xlib.h>

namespace orvel::x11 {

CapsLockOutcome X11CapsLock::set(bool on) {
    if (!hub_.session().isAlive()) return CapsLockOutcome::notOpened;
    XkbLockModifiers(hub_.session().display(), XkbUseCoreKbd, LockMask, on ? LockMask : 0U);
    hub_.state().setCapsLock(on);
    hub_.flush();
    return CapsLockOutcome::done;
}

}  // namespace orvel::x11
