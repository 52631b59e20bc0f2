#include "tools/rig/tray.hpp"

#include "tools/rig/rig_error.hpp"

#include <X11/Xatom.h>
#include <X11/Xlib.h>

#include <array>
#include <vector>

namespace orvel::rig {
namespace {

WindowId trayOwner(XConnection& x) {
    return XGetSelectionOwner(x.get(), x.atom("_NET_SYSTEM_TRAY_S0"));
}

void collectIcons(XConnection& x, Window window, std::vector<Window>& icons) {
    for (const Window child : childrenOf(x, window)) {
        // A window that embeds itself says so in a property.
        if (hasProperty(x, child, "_XEMBED_INFO")) {
            icons.push_back(child);
        } else {
            collectIcons(x, child, icons);
        }
    }
}

}  // namespace

Tray::Tray(const Environment& environment, XConnection& x)
    : x_(x),
      process_({.arguments = {"trayer", "--edge", "bottom", "--align", "right", "--widthtype",
                              "request", "--height", "28"},
                .environment = environment}),
      window_(waitForWindow(x, "panel")) {
    if (!pollUntil([&] { return trayOwner(x) != None; })) {
        throw RigError("the tray does not start: " + process_.err().text());
    }
}

std::optional<WindowFrame> Tray::icon() const {
    std::vector<Window> icons;
    collectIcons(x_, window_, icons);
    if (icons.empty() || !isVisible(x_, icons.back())) return std::nullopt;
    // The tray grows before it moves, and pushes its end off the screen meanwhile.
    const WindowFrame frame = frameOf(x_, icons.back());
    const WindowFrame screen = frameOf(x_, x_.root());
    const bool isOnScreen = frame.x + frame.width <= screen.width;
    return isOnScreen ? std::optional(frame) : std::nullopt;
}

WindowFrame Tray::waitForIcon() const {
    const auto found = pollUntil([&] { return icon(); },
                                 [](const std::optional<WindowFrame>& frame) { return !!frame; });
    if (!found) throw RigError("no icon docks in the tray");
    return *found.last;
}

void Tray::tellColour(const std::optional<Colour>& colour) {
    const Atom property = x_.atom("_NET_SYSTEM_TRAY_COLORS");
    if (!colour) {
        XDeleteProperty(x_.get(), trayOwner(x_), property);
        x_.sync();
        return;
    }
    // Symbols, errors, warnings and successes, each with 16 bits of red, green and blue.
    std::array<unsigned long, 12> parts{};
    constexpr unsigned long kTo16Bits = 0x101;
    for (std::size_t i = 0; i < parts.size(); i += 3) {
        parts[i] = colour->red * kTo16Bits;
        parts[i + 1] = colour->green * kTo16Bits;
        parts[i + 2] = colour->blue * kTo16Bits;
    }
    XChangeProperty(x_.get(), trayOwner(x_), property, XA_CARDINAL, 32, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(parts.data()),
                    static_cast<int>(parts.size()));
    x_.sync();
}

}  // namespace orvel::rig
