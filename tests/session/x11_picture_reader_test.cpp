#include "platform/base/bitmap.hpp"
#include "platform/x11/picture_reader.hpp"
#include "platform/x11/x11_window_images.hpp"
#include "tools/rig/child_process.hpp"
#include "tools/rig/scratch_home.hpp"

#include <gmock/gmock.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvel::test {
namespace {

/// An X server without anything beside it that can do less than usual.
class LesserServer {
public:
    explicit LesserServer(std::vector<std::string> options)
        : process_(
              {.arguments = arguments(std::move(options)), .environment = home_.environment()}),
          display_(':' + process_.out().waitForText("").value_or("")) {
        auto opened = x11::ServiceConnection::open(display_);
        EXPECT_TRUE(opened) << opened.error();
        server_ = std::move(opened).value();
    }
    x11::ServiceConnection& server() { return *server_; }

    /// A pixmap of one colour.
    xcb_pixmap_t filled(std::uint16_t width, std::uint16_t height, std::uint32_t pixel) {
        const auto pixmap = xcb_generate_id(server_->raw());
        xcb_create_pixmap(server_->raw(), server_->screen().root_depth, pixmap, server_->root(),
                          width, height);
        const auto pen = xcb_generate_id(server_->raw());
        xcb_create_gc(server_->raw(), pen, pixmap, XCB_GC_FOREGROUND, &pixel);
        const xcb_rectangle_t all{0, 0, width, height};
        xcb_poly_fill_rectangle(server_->raw(), pixmap, pen, 1, &all);
        return pixmap;
    }
    std::optional<Bitmap> read(xcb_pixmap_t pixmap, const x11::RootRect& part) {
        return x11::PictureReader(*server_).read(
            {pixmap, server_->screen().root_depth, server_->screen().root_visual, part},
            x11::deadlineIn(x11::kServerLimit));
    }

private:
    static std::vector<std::string> arguments(std::vector<std::string> options) {
        std::vector<std::string> all{"Xvfb", "-displayfd", "1", "-nolisten", "tcp"};
        all.insert(all.end(), options.begin(), options.end());
        return all;
    }

    rig::ScratchHome home_;
    rig::ChildProcess process_;
    std::string display_;
    std::unique_ptr<x11::ServiceConnection> server_;
};

TEST(PictureReaderTest, WithoutSharedMemoryPicturesComeThroughTheConnection) {
    LesserServer lesser({"-screen", "0", "800x600x24", "-extension", "MIT-SHM"});
    EXPECT_FALSE(x11::PictureReader(lesser.server()).hasSharedMemory());
    const auto picture = lesser.read(lesser.filled(100, 50, 0x123456), {10, 10, 80, 30});
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->width, 80);
    EXPECT_EQ(picture->height, 30);
    EXPECT_THAT(picture->pixels, testing::Each(0xff123456U));
    EXPECT_THAT(x11::X11WindowImages::check(lesser.server()).finding,
                testing::HasSubstr("without shared memory"));
}

TEST(PictureReaderTest, AScreenOfSixteenBitsIsRead) {
    LesserServer lesser({"-screen", "0", "800x600x16"});
    EXPECT_TRUE(x11::PictureReader(lesser.server()).hasSharedMemory());
    const auto picture = lesser.read(lesser.filled(101, 50, 0xf800), {0, 0, 101, 50});
    ASSERT_TRUE(picture);
    EXPECT_THAT(picture->pixels, testing::Each(0xffff0000U));
}

TEST(PictureReaderTest, AScreenWithATableOfColoursHasNoPictures) {
    LesserServer lesser({"-screen", "0", "800x600x8"});
    EXPECT_FALSE(lesser.read(lesser.filled(10, 10, 1), {0, 0, 10, 10}));
}

TEST(PictureReaderTest, AServerWithoutCompositeIsToldWithARemedy) {
    LesserServer lesser({"-extension", "Composite"});
    const auto check = x11::X11WindowImages::check(lesser.server());
    EXPECT_FALSE(check.isOk);
    EXPECT_THAT(check.finding, testing::HasSubstr("Composite"));
    EXPECT_THAT(check.remedy, testing::Ne(""));
}

}  // namespace
}  // namespace orvel::test
