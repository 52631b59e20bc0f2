#pragma once

#include <X11/extensions/XInput2.h>

#include <array>
#include <initializer_list>

namespace orvel::x11 {

/// A set of input events of one device, in the form that the server's requests take.
class EventSet {
public:
    EventSet(int device, std::initializer_list<int> events) {
        for (const int event : events) XISetMask(bits_.data(), event);
        mask_ = {device, static_cast<int>(bits_.size()), bits_.data()};
    }
    EventSet(const EventSet&) = delete;
    EventSet& operator=(const EventSet&) = delete;

    [[nodiscard]] XIEventMask* mask() { return &mask_; }

private:
    std::array<unsigned char, XIMaskLen(XI_LASTEVENT)> bits_{};
    XIEventMask mask_{};
};

}  // namespace orvel::x11
