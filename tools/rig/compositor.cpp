#include "tools/rig/compositor.hpp"

#include "tools/rig/rig_error.hpp"

#include <X11/Xlib.h>

namespace orvel::rig {

Compositor::Compositor(const Environment& environment, XConnection& x)
    : process_({.arguments = {"picom", "--config", "/dev/null", "--backend", "xrender"},
                .environment = environment}) {
    const bool isThere = pollUntil([&] {
        return XGetSelectionOwner(x.get(), x.atom("_NET_WM_CM_S0")) != None || !process_.running();
    });
    if (!isThere || !process_.running()) {
        throw RigError("the compositor does not start: " + process_.err().text());
    }
}

}  // namespace orvel::rig
