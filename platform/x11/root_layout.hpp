#pragma once

#include "platform/screens.hpp"

#include <cstdint>
#include <optional>
#include <vector>

namespace orvel::x11 {

/// A rectangle in the root window: origin top left of all screens together, pixels.
struct RootRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    [[nodiscard]] int right() const { return x + width; }
    [[nodiscard]] int bottom() const { return y + height; }
    bool operator==(const RootRect&) const = default;
};

RootRect intersection(const RootRect& one, const RootRect& other);

/// One monitor as the server reports it.
struct Monitor {
    RootRect area;
    bool isPrimary = false;
    bool operator==(const Monitor&) const = default;
};

/// Space at the edges of the root window that a dock or panel reserves (_NET_WM_STRUT_PARTIAL).
struct Strut {
    int left = 0, right = 0, top = 0, bottom = 0;
    int leftStartY = 0, leftEndY = 0, rightStartY = 0, rightEndY = 0;
    int topStartX = 0, topEndX = 0, bottomStartX = 0, bottomEndX = 0;
};

/// Everything that decides where screens are.
struct RootState {
    RootRect root;
    std::vector<Monitor> monitors;
    std::optional<RootRect> workArea;
    std::vector<Strut> struts;
};

/// Where the main screen lies in the root window; turns root coordinates into the two spaces of
/// the ports, whose origins are corners of the main screen, and back. One point is one pixel.
struct RootLayout {
    RootRect main;

    [[nodiscard]] AxPoint toAx(int x, int y) const;
    [[nodiscard]] AxRect toAx(const RootRect& rect) const;
    [[nodiscard]] ScreenPoint toScreen(int x, int y) const;
    [[nodiscard]] ScreenRect toScreen(const RootRect& rect) const;
    [[nodiscard]] RootRect fromScreen(const ScreenRect& rect) const;
    /// Rounded to whole pixels.
    [[nodiscard]] RootRect fromAx(const AxRect& rect) const;
    bool operator==(const RootLayout&) const = default;
};

/// The main screen is the primary monitor, else the first; empty without monitors.
RootLayout rootLayout(const RootState& state);

/// The screens with what docks and panels leave free, the main one first. A mirrored monitor
/// counts once.
std::vector<Screen> layOutScreens(const RootState& state);

}  // namespace orvel::x11
