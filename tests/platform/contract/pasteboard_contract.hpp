#pragma once

#include "platform/pasteboard.hpp"

#include <gtest/gtest.h>

#include <string>

namespace orvel::contract {

/// What every pasteboard does. `Harness`:
///     Pasteboard& pasteboard();
///     void copyText(std::string text);            another application copies a text
///     void copyPicture(int width, int height);    … or a picture
///     std::string pictureFile();                  the path of a file with a picture
///     void settle();                              what is under way came to its end
template <typename Harness>
class PasteboardContract : public ::testing::Test {
protected:
    Harness harness;
    Pasteboard& pasteboard = harness.pasteboard();
};

TYPED_TEST_SUITE_P(PasteboardContract);

TYPED_TEST_P(PasteboardContract, CountsWhatOthersCopy) {
    const auto before = this->pasteboard.changeCount();
    this->harness.copyText("a");
    EXPECT_GT(this->pasteboard.changeCount(), before);
    EXPECT_EQ(this->pasteboard.string(), "a");
    EXPECT_FALSE(this->pasteboard.image().has_value());
    const auto between = this->pasteboard.changeCount();
    this->harness.copyText("a");
    EXPECT_GT(this->pasteboard.changeCount(), between) << "the same text is a new copy";
}

TYPED_TEST_P(PasteboardContract, GivesTextAsItWasCopied) {
    const std::string odd = "  第一行\n\t\"x\" 🚀 ";
    this->harness.copyText(odd);
    EXPECT_EQ(this->pasteboard.string(), odd);
}

TYPED_TEST_P(PasteboardContract, GivesPicturesWithTheirSize) {
    this->harness.copyPicture(64, 48);
    const auto image = this->pasteboard.image();
    ASSERT_TRUE(image.has_value());
    EXPECT_EQ(image->picture.pixelWidth, 64);
    EXPECT_EQ(image->picture.pixelHeight, 48);
    EXPECT_FALSE(image->tiff.empty());
}

TYPED_TEST_P(PasteboardContract, HoldsNothingAfterItWasCleared) {
    this->harness.copyText("a");
    const auto before = this->pasteboard.changeCount();
    this->pasteboard.clear();
    this->harness.settle();
    EXPECT_GT(this->pasteboard.changeCount(), before);
    EXPECT_EQ(this->pasteboard.string(), std::nullopt);
    EXPECT_FALSE(this->pasteboard.image().has_value());
}

TYPED_TEST_P(PasteboardContract, HoldsTheTextThatWeWrite) {
    this->pasteboard.clear();
    this->pasteboard.setString("路径 /a b");
    this->harness.settle();
    EXPECT_EQ(this->pasteboard.string(), "路径 /a b");
    const auto count = this->pasteboard.changeCount();
    this->harness.settle();
    EXPECT_EQ(this->pasteboard.changeCount(), count) << "our own text settles";
}

TYPED_TEST_P(PasteboardContract, HoldsThePictureThatWeWrite) {
    this->pasteboard.clear();
    EXPECT_TRUE(this->pasteboard.writeImage(this->harness.pictureFile()).ok());
    const auto count = this->pasteboard.changeCount();
    const auto image = this->pasteboard.image();
    ASSERT_TRUE(image.has_value());
    EXPECT_FALSE(image->tiff.empty());
    this->harness.settle();
    EXPECT_EQ(this->pasteboard.changeCount(), count) << "our own picture settles";
}

TYPED_TEST_P(PasteboardContract, HoldsWhatOthersCopyAfterUs) {
    this->pasteboard.clear();
    this->pasteboard.setString("ours");
    this->harness.settle();
    const auto before = this->pasteboard.changeCount();
    this->harness.copyText("theirs");
    EXPECT_EQ(this->pasteboard.changeCount(), before + 1);
    EXPECT_EQ(this->pasteboard.string(), "theirs");
    this->pasteboard.clear();
    this->pasteboard.setString("ours again");
    EXPECT_EQ(this->pasteboard.changeCount(), before + 2);
    EXPECT_EQ(this->pasteboard.string(), "ours again");
}

TYPED_TEST_P(PasteboardContract, WritesNoPictureThatCannotBeLoaded) {
    this->pasteboard.clear();
    EXPECT_FALSE(this->pasteboard.writeImage("/no/such/picture.tiff").ok());
    EXPECT_FALSE(this->pasteboard.image().has_value());
}

REGISTER_TYPED_TEST_SUITE_P(PasteboardContract, CountsWhatOthersCopy, GivesTextAsItWasCopied,
                            GivesPicturesWithTheirSize, HoldsNothingAfterItWasCleared,
                            HoldsTheTextThatWeWrite, HoldsThePictureThatWeWrite,
                            HoldsWhatOthersCopyAfterUs, WritesNoPictureThatCannotBeLoaded);

}  // namespace orvel::contract
