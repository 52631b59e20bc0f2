#include "platform/window_images.hpp"

#include "platform/macos/mac_bounded_wait.hpp"
#include "platform/macos/mac_factories.hpp"
#include "platform/macos/mac_picture.hpp"
#include "platform/macos/mac_window_capture.hpp"

#import <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>
#import <ScreenCaptureKit/ScreenCaptureKit.h>

namespace orvel::macos {

namespace {

/// A picture takes some tens of milliseconds; a window server that is busy must not hold us up.
constexpr std::chrono::milliseconds kLimit{200};

using Image = CfRef<CGImageRef>;
using ImageBox = std::shared_ptr<Mailbox<Image>>;

API_AVAILABLE(macos(14.0))
void captureFrom(SCShareableContent* content, WindowNumber number, const ImageBox& box) {
    for (SCWindow* window in content.windows) {
        if (window.windowID != number) continue;
        SCContentFilter* filter = [[SCContentFilter alloc] initWithDesktopIndependentWindow:window];
        SCStreamConfiguration* configuration = [[SCStreamConfiguration alloc] init];
        const auto pixels = [&](CGFloat points) {
            return static_cast<std::size_t>(points * filter.pointPixelScale);
        };
        configuration.width = pixels(window.frame.size.width);
        configuration.height = pixels(window.frame.size.height);
        configuration.showsCursor = NO;
        configuration.ignoreShadowsSingleWindow = YES;
        [SCScreenshotManager captureImageWithFilter:filter
                                      configuration:configuration
                                  completionHandler:^(CGImageRef image, NSError*) {
                                    box->put(Image::retaining(image));
                                  }];
        return;
    }
    box->put(Image());
}

class MacWindowImages final : public WindowImages {
public:
    [[nodiscard]] bool hasPermission() const override { return CGPreflightScreenCaptureAccess(); }
    void requestPermission() override { CGRequestScreenCaptureAccess(); }

    [[nodiscard]] std::optional<Picture> capture(WindowNumber number) override {
        // Without the permission each try would show the system's prompt again.
        if (!hasPermission()) return std::nullopt;
        @autoreleasepool {
            const Image image = captureWindow(number);
            if (!image) return std::nullopt;
            return pictureOf(image.get());
        }
    }

private:
    static Image captureWindow(WindowNumber number) {
        if (@available(macOS 14.0, *)) return captureByScreenCaptureKit(number);
        return captureByWindowServer(number);
    }
};

}  // namespace

Image captureByScreenCaptureKit(WindowNumber number) {
    const ImageBox box = std::make_shared<Mailbox<Image>>();
    [SCShareableContent
        getShareableContentExcludingDesktopWindows:YES
                               onScreenWindowsOnly:NO
                                 completionHandler:^(SCShareableContent* content, NSError*) {
                                   captureFrom(content, number, box);
                                 }];
    return box->wait(kLimit).value_or(Image());
}

Image captureByWindowServer(WindowNumber number) {
    return Image(CGWindowListCreateImage(CGRectNull, kCGWindowListOptionIncludingWindow, number,
                                         kCGWindowImageBoundsIgnoreFraming));
}

std::unique_ptr<WindowImages> makeWindowImages() { return std::make_unique<MacWindowImages>(); }

}  // namespace orvel::macos
