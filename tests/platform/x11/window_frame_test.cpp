#include "platform/x11/window_frame.hpp"

#include "platform/x11/window_properties.hpp"

#include <gtest/gtest.h>

namespace orvel::x11 {
namespace {

TEST(WindowFrame, TheWindowManagersFrameBelongsToTheWindow) {
    const WindowFrame frame{{5, 5, 29, 5}, {}};
    EXPECT_EQ(frame.seen({105, 129, 300, 200}), (RootRect{100, 100, 310, 234}));
}

TEST(WindowFrame, AShadowDrawnByTheApplicationDoesNot) {
    const WindowFrame frame{{}, {26, 26, 23, 29}};
    EXPECT_EQ(frame.seen({74, 77, 352, 252}), (RootRect{100, 100, 300, 200}));
}

TEST(WindowFrame, TheClientAreaShowsThatWindowAgain) {
    for (const auto& frame : {WindowFrame{{1, 1, 22, 5}, {}}, WindowFrame{{}, {26, 26, 23, 29}}}) {
        const RootRect wanted{10, 20, 640, 480};
        EXPECT_EQ(frame.seen(frame.client(wanted)), wanted);
    }
}

TEST(WindowFrame, AClientAreaHasAtLeastOnePixel) {
    const WindowFrame frame{{5, 5, 29, 5}, {}};
    EXPECT_EQ(frame.client({0, 0, 3, 3}).width, 1);
    EXPECT_EQ(frame.client({0, 0, 3, 3}).height, 1);
}

TEST(Extents, AMalformedPropertyIsNoFrame) {
    EXPECT_EQ(extentsOf({1, 2, 3, 4}), (Extents{1, 2, 3, 4}));
    EXPECT_EQ(extentsOf({1, 2, 3}), Extents{});
    EXPECT_EQ(extentsOf({1, 2, 3, 0xffffffffU}), Extents{});
}

TEST(PropertyText, InvalidUtf8IsReadAsLatin1) {
    EXPECT_EQ(toUtf8("caf\xc3\xa9"), "caf\xc3\xa9");
    EXPECT_EQ(toUtf8("caf\xe9"), "caf\xc3\xa9");
    EXPECT_EQ(toUtf8("\xe9\xe9"), "\xc3\xa9\xc3\xa9");
    EXPECT_EQ(toUtf8("half \xe2\x82"), "half \xc3\xa2\xc2\x82");
}

}  // namespace
}  // namespace orvel::x11
