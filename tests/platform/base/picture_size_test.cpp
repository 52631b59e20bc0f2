#include "platform/base/picture_size.hpp"

#include <gtest/gtest.h>

namespace orvel {
namespace {

TEST(PictureSize, WhatIsSmallKeepsItsSize) {
    EXPECT_EQ(pictureSizeFor(640, 400), (PictureSize{640, 400}));
    EXPECT_EQ(pictureSizeFor(1, 1), (PictureSize{1, 1}));
}

TEST(PictureSize, TheLongerSideBecomesTheLargestThereIs) {
    EXPECT_EQ(pictureSizeFor(1920, 1080), (PictureSize{640, 360}));
    EXPECT_EQ(pictureSizeFor(1000, 2000), (PictureSize{320, 640}));
}

TEST(PictureSize, ATallWindowDoesNotBecomeASliver) {
    const PictureSize size = pictureSizeFor(70, 1400);
    EXPECT_EQ(size.width, 64);
    EXPECT_EQ(size.height, 1280);
}

TEST(PictureSize, ASliverStaysOne) {
    EXPECT_EQ(pictureSizeFor(20, 1000), (PictureSize{20, 1000}));
    EXPECT_EQ(pictureSizeFor(5000, 3), (PictureSize{640, 1}));
}

}  // namespace
}  // namespace orvel
