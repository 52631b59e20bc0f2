#pragma once

#include "platform/haptics.hpp"

namespace orvel::x11 {

/// No touchpad of an X11 session has a motor that programs can drive.
class X11Haptics final : public Haptics {
public:
    void tap() override {}
};

}  // namespace orvel::x11
