#include "platform/x11/root_layout.hpp"

#include <algorithm>
#include <cmath>

namespace orvel::x11 {

namespace {

/// The monitors without mirrors, the main one first.
std::vector<Monitor> orderedMonitors(const RootState& state) {
    std::vector<Monitor> ordered;
    for (const auto& monitor : state.monitors) {
        if (monitor.area.width <= 0 || monitor.area.height <= 0) continue;
        const auto twin = std::find_if(ordered.begin(), ordered.end(), [&](const Monitor& other) {
            return other.area == monitor.area;
        });
        if (twin == ordered.end())
            ordered.push_back(monitor);
        else
            twin->isPrimary = twin->isPrimary || monitor.isPrimary;
    }
    std::stable_partition(ordered.begin(), ordered.end(),
                          [](const Monitor& monitor) { return monitor.isPrimary; });
    return ordered;
}

bool overlaps(int start, int end, int first, int last) { return start <= last && first < end; }

/// Cuts the bands of one strut off; a band that would leave nothing of the screen is ignored.
RootRect withoutStrut(const RootRect& area, const RootRect& free, const RootRect& root,
                      const Strut& strut) {
    int left = free.x, top = free.y, right = free.right(), bottom = free.bottom();
    if (strut.left > 0 && overlaps(area.y, area.bottom(), strut.leftStartY, strut.leftEndY) &&
        strut.left < area.right())
        left = std::max(left, strut.left);
    if (strut.right > 0 && overlaps(area.y, area.bottom(), strut.rightStartY, strut.rightEndY) &&
        root.width - strut.right > area.x)
        right = std::min(right, root.width - strut.right);
    if (strut.top > 0 && overlaps(area.x, area.right(), strut.topStartX, strut.topEndX) &&
        strut.top < area.bottom())
        top = std::max(top, strut.top);
    if (strut.bottom > 0 && overlaps(area.x, area.right(), strut.bottomStartX, strut.bottomEndX) &&
        root.height - strut.bottom > area.y)
        bottom = std::min(bottom, root.height - strut.bottom);
    const RootRect remaining{left, top, right - left, bottom - top};
    return remaining.width > 0 && remaining.height > 0 ? remaining : free;
}

RootRect freeArea(const RootRect& area, const RootState& state, bool isOnly) {
    // _NET_WORKAREA is one rectangle for all monitors: only with one of them it is exact.
    if (isOnly && state.workArea) {
        const auto free = intersection(area, *state.workArea);
        if (free.width > 0 && free.height > 0) return free;
    }
    RootRect free = area;
    for (const auto& strut : state.struts) free = withoutStrut(area, free, state.root, strut);
    return free;
}

}  // namespace

RootRect intersection(const RootRect& one, const RootRect& other) {
    const int x = std::max(one.x, other.x);
    const int y = std::max(one.y, other.y);
    return {x, y, std::min(one.right(), other.right()) - x,
            std::min(one.bottom(), other.bottom()) - y};
}

AxPoint RootLayout::toAx(int x, int y) const {
    return {static_cast<double>(x - main.x), static_cast<double>(y - main.y)};
}

AxRect RootLayout::toAx(const RootRect& rect) const {
    const auto origin = toAx(rect.x, rect.y);
    return {origin.x, origin.y, static_cast<double>(rect.width), static_cast<double>(rect.height)};
}

ScreenPoint RootLayout::toScreen(int x, int y) const {
    return {static_cast<double>(x - main.x), static_cast<double>(main.bottom() - y)};
}

ScreenRect RootLayout::toScreen(const RootRect& rect) const {
    const auto bottomLeft = toScreen(rect.x, rect.bottom());
    return {bottomLeft.x, bottomLeft.y, static_cast<double>(rect.width),
            static_cast<double>(rect.height)};
}

RootRect RootLayout::fromScreen(const ScreenRect& rect) const {
    return {static_cast<int>(std::lround(rect.x)) + main.x,
            main.bottom() - static_cast<int>(std::lround(rect.maxY())),
            static_cast<int>(std::lround(rect.width)), static_cast<int>(std::lround(rect.height))};
}

RootRect RootLayout::fromAx(const AxRect& rect) const {
    return {static_cast<int>(std::lround(rect.x)) + main.x,
            static_cast<int>(std::lround(rect.y)) + main.y,
            static_cast<int>(std::lround(rect.width)), static_cast<int>(std::lround(rect.height))};
}

RootLayout rootLayout(const RootState& state) {
    const auto monitors = orderedMonitors(state);
    return {monitors.empty() ? RootRect{} : monitors.front().area};
}

std::vector<Screen> layOutScreens(const RootState& state) {
    const auto monitors = orderedMonitors(state);
    const auto layout = rootLayout(state);
    std::vector<Screen> screens;
    for (const auto& monitor : monitors) {
        const auto free = freeArea(monitor.area, state, monitors.size() == 1);
        screens.push_back({layout.toScreen(monitor.area), layout.toScreen(free)});
    }
    return screens;
}

}  // namespace orvel::x11
