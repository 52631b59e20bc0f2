#include "platform/x11/wheel_kind.hpp"

#include <gtest/gtest.h>

namespace orvel::x11::test {
namespace {

TEST(WheelKind, AMouseWithAWheelIsNotched) {
    EXPECT_EQ(wheelKindOf({.name = "Logitech USB Mouse", .buttonCount = 7}), WheelKind::notched);
    EXPECT_EQ(wheelKindOf({.name = "MX Master 3",
                           .scrolls = true,
                           .buttonCount = 12,
                           .properties = {"libinput Natural Scrolling Enabled"}}),
              WheelKind::notched);
}

TEST(WheelKind, TheDriverTellsATouchpad) {
    EXPECT_EQ(wheelKindOf({.name = "DELL0A20:00 0488:121F",
                           .scrolls = true,
                           .buttonCount = 7,
                           .properties = {"Device Enabled", "libinput Tapping Enabled"}}),
              WheelKind::continuous);
    EXPECT_EQ(wheelKindOf({.name = "pad", .buttonCount = 12, .properties = {"Synaptics Off"}}),
              WheelKind::continuous);
}

TEST(WheelKind, ElseTheNameTells) {
    EXPECT_EQ(wheelKindOf({.name = "Apple Magic Trackpad", .scrolls = true, .buttonCount = 7}),
              WheelKind::continuous);
    EXPECT_EQ(wheelKindOf({.name = "TPPS/2 IBM TrackPoint", .scrolls = true, .buttonCount = 7}),
              WheelKind::continuous);
}

TEST(WheelKind, ADeviceWithoutScrollingHasNone) {
    EXPECT_EQ(wheelKindOf({.name = "Power Button", .hasKeys = true}), WheelKind::none);
    EXPECT_EQ(wheelKindOf({.name = "Three buttons", .buttonCount = 3}), WheelKind::none);
}

}  // namespace
}  // namespace orvel::x11::test
