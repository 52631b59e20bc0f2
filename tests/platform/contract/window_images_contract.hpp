#pragma once

#include "platform/base/picture_size.hpp"
#include "platform/window_images.hpp"

#include <gtest/gtest.h>

#include <string>

namespace orvel::contract {

/// What every source of window pictures does. `Harness`:
///     WindowImages& images();
///     WindowList& list();
///     ProcessId open(std::string title, AxRect frame);   a new window in front of all others
///     void minimise(ProcessId pid);
///     void close(ProcessId pid);
template <typename Harness>
class WindowImagesContract : public ::testing::Test {
protected:
    Harness harness;
    WindowImages& images = harness.images();

    [[nodiscard]] WindowNumber numberOf(ProcessId pid) {
        for (const WindowInfo& window : harness.list().windows(WindowListScope::all)) {
            if (window.pid == pid) return window.number;
        }
        ADD_FAILURE() << "no window of process " << pid;
        return 0;
    }
};

TYPED_TEST_SUITE_P(WindowImagesContract);

TYPED_TEST_P(WindowImagesContract, APictureHasTheShapeOfItsWindow) {
    const auto number = this->numberOf(this->harness.open("Notes", {100, 120, 400, 300}));
    const auto picture = this->images.capture(number);
    ASSERT_TRUE(this->images.hasPermission());
    ASSERT_TRUE(picture);
    EXPECT_GE(picture->pixelWidth, 400);
    EXPECT_LE(picture->pixelWidth, kLargestPictureSide);
    EXPECT_EQ(picture->pixelHeight, picture->pixelWidth * 3 / 4);
}

TYPED_TEST_P(WindowImagesContract, EachPictureIsAnotherOne) {
    const auto number = this->numberOf(this->harness.open("Notes", {100, 120, 400, 300}));
    const auto first = this->images.capture(number);
    const auto second = this->images.capture(number);
    ASSERT_TRUE(first && second);
    EXPECT_NE(first->serial, second->serial);
}

TYPED_TEST_P(WindowImagesContract, ACoveredWindowHasItsWholePicture) {
    const auto number = this->numberOf(this->harness.open("Below", {100, 120, 400, 300}));
    this->harness.open("Above", {50, 50, 600, 500});
    const auto picture = this->images.capture(number);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->pixelHeight, picture->pixelWidth * 3 / 4);
}

TYPED_TEST_P(WindowImagesContract, AMinimisedWindowShowsWhatItShowedLast) {
    const ProcessId pid = this->harness.open("Notes", {100, 120, 400, 300});
    const auto number = this->numberOf(pid);
    this->harness.minimise(pid);
    const auto picture = this->images.capture(number);
    ASSERT_TRUE(picture);
    EXPECT_GE(picture->pixelWidth, 400);
    EXPECT_EQ(picture->pixelHeight, picture->pixelWidth * 3 / 4);
}

TYPED_TEST_P(WindowImagesContract, AWindowThatIsGoneHasNoPicture) {
    const ProcessId pid = this->harness.open("Notes", {100, 120, 400, 300});
    const auto number = this->numberOf(pid);
    ASSERT_TRUE(this->images.capture(number));
    this->harness.close(pid);
    EXPECT_FALSE(this->images.capture(number));
}

TYPED_TEST_P(WindowImagesContract, ANumberThatIsNoWindowsHasNoPicture) {
    EXPECT_FALSE(this->images.capture(0));
    EXPECT_FALSE(this->images.capture(4000000000U));
}

REGISTER_TYPED_TEST_SUITE_P(WindowImagesContract, APictureHasTheShapeOfItsWindow,
                            EachPictureIsAnotherOne, ACoveredWindowHasItsWholePicture,
                            AMinimisedWindowShowsWhatItShowedLast, AWindowThatIsGoneHasNoPicture,
                            ANumberThatIsNoWindowsHasNoPicture);

}  // namespace orvel::contract
