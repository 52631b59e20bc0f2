#include "tools/rig/embedded_desktop.hpp"

#include <X11/Xlib.h>

namespace orvel::rig {
namespace {

constexpr unsigned long kBackground = 0x2f5d62;

}  // namespace

EmbeddedDesktop::EmbeddedDesktop(const Options& options)
    : server_(home_, options.size),
      state_(server_.x()),
      bus_(server_.environment(), options.accessibility) {
    if (options.windowManager)
        windowManager_.emplace(*options.windowManager, bus_.environment(), server_.x());
    XSetWindowBackground(x().get(), x().root(), kBackground);
    XClearWindow(x().get(), x().root());
    x().sync();
}

void EmbeddedDesktop::pointAt(ScreenPoint point) {
    const ScreenPoint from = state_.pointer();
    mouse().move(point.x - from.x, point.y - from.y);
}

}  // namespace orvel::rig
