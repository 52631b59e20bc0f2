#pragma once

namespace orvel {

/// The two ways this system counts screen coordinates. All values are points.
enum class CoordinateSpace {
    bottomLeft,  ///< origin at the bottom left of the main screen, y grows upwards
    topLeft,     ///< origin at the top left of the main screen, y grows downwards
};

template <CoordinateSpace space>
struct PointIn {
    double x = 0;
    double y = 0;
    bool operator==(const PointIn&) const = default;
};

struct Size {
    double width = 0;
    double height = 0;
    bool operator==(const Size&) const = default;
};

template <CoordinateSpace space>
struct RectIn {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    [[nodiscard]] double minX() const { return x; }
    [[nodiscard]] double minY() const { return y; }
    [[nodiscard]] double midX() const { return x + width / 2; }
    [[nodiscard]] double midY() const { return y + height / 2; }
    [[nodiscard]] double maxX() const { return x + width; }
    [[nodiscard]] double maxY() const { return y + height; }
    [[nodiscard]] PointIn<space> origin() const { return {x, y}; }
    [[nodiscard]] Size size() const { return {width, height}; }

    /// The minimum edges belong to the rectangle, the maximum edges do not.
    [[nodiscard]] bool contains(PointIn<space> point) const {
        return point.x >= minX() && point.x < maxX() && point.y >= minY() && point.y < maxY();
    }
    bool operator==(const RectIn&) const = default;
};

/// Coordinates of screens, panels and the pointer.
using ScreenPoint = PointIn<CoordinateSpace::bottomLeft>;
using ScreenRect = RectIn<CoordinateSpace::bottomLeft>;

/// Coordinates of accessibility elements and of the window server's list.
using AxPoint = PointIn<CoordinateSpace::topLeft>;
using AxRect = RectIn<CoordinateSpace::topLeft>;

/// A point inside a panel or button, origin at its bottom left.
struct LocalPoint {
    double x = 0;
    double y = 0;
    bool operator==(const LocalPoint&) const = default;
};

}  // namespace orvel
