#pragma once

#include <X11/Xlib.h>
#include <X11/extensions/XInput2.h>

#include <map>
#include <optional>

namespace orvel::rig {

/// Distance in notches.
struct ScrollDistance {
    double down = 0;
    double right = 0;
};

/// Turns the ever-growing positions of scroll axes into distances, as toolkits do.
class ScrollAxes {
public:
    explicit ScrollAxes(Display* display) : display_(display) { readPositions(); }

    /// To be called when scrolling may have happened elsewhere: the pointer enters the window,
    /// a device comes or goes.
    void readPositions();
    /// Nothing when the motion did not scroll.
    std::optional<ScrollDistance> distanceOf(const XIDeviceEvent& motion);

private:
    struct Axis {
        bool vertical = false;
        double increment = 1;
        double position = 0;
    };
    using AxesByNumber = std::map<int, Axis>;

    static AxesByNumber axesOf(const XIDeviceInfo& device);
    Axis* find(int device, int number);

    Display* display_;
    std::map<int, AxesByNumber> axes_;
};

}  // namespace orvel::rig
