#include "engine/snapping/snap_geometry.hpp"

#include <cassert>

namespace orvel {

namespace {

constexpr double kTaskbarHeight = 50;

SnapStep sideStep(WindowSnapState state, WindowSnapState opposite) {
    if (state == opposite) return {SnapStep::Kind::restore, false};
    return {SnapStep::Kind::snap, state == WindowSnapState::unsnapped};
}

}  // namespace

SnapStep snapStep(SnapDirection direction, WindowSnapState state) {
    switch (direction) {
        case SnapDirection::left: return sideStep(state, WindowSnapState::right);
        case SnapDirection::right: return sideStep(state, WindowSnapState::left);
        case SnapDirection::up: return {SnapStep::Kind::snap, state == WindowSnapState::unsnapped};
        case SnapDirection::down: break;
    }
    return {
        state == WindowSnapState::unsnapped ? SnapStep::Kind::minimize : SnapStep::Kind::restore,
        false};
}

double SnapArea::leftEdge(SnapDirection direction, double actualWidth) const {
    if (direction == SnapDirection::left) return corner.x;
    const double spare = screenWidth - actualWidth;
    return corner.x + (direction == SnapDirection::right ? spare : spare * 0.5);
}

SnapArea snapArea(const Screen& screen, SnapDirection direction, bool taskbarIsOn) {
    const ScreenRect& visible = screen.visibleFrame;
    const double top = screen.frame.height - visible.maxY();
    const double height = screen.frame.height - top - (taskbarIsOn ? kTaskbarHeight : 0);
    const double width = direction == SnapDirection::up ? visible.width : visible.width * 0.5;
    return {.corner = {visible.minX(), top},
            .requestedSize = {width, height},
            .screenWidth = visible.width};
}

WindowSnapState snappedState(SnapDirection direction) {
    assert(direction != SnapDirection::down);
    if (direction == SnapDirection::left) return WindowSnapState::left;
    return direction == SnapDirection::right ? WindowSnapState::right : WindowSnapState::maximized;
}

}  // namespace orvel
