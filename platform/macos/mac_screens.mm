#include "platform/screens.hpp"

#include "platform/macos/mac_factories.hpp"
#include "platform/macos/mac_rect.hpp"

#import <AppKit/AppKit.h>

namespace orvel::macos {

namespace {

/// The system counts screens from the bottom left, as the port does.
Screen describe(NSScreen* screen) {
    return {.frame = rectFrom<ScreenRect>(screen.frame),
            .visibleFrame = rectFrom<ScreenRect>(screen.visibleFrame)};
}

class MacScreens final : public Screens {
public:
    [[nodiscard]] std::vector<Screen> screens() const override {
        @autoreleasepool {
            std::vector<Screen> described;
            // The first one is that at the origin of all coordinates.
            for (NSScreen* screen in NSScreen.screens) described.push_back(describe(screen));
            return described;
        }
    }
};

}  // namespace

std::unique_ptr<Screens> makeScreens() { return std::make_unique<MacScreens>(); }

}  // namespace orvel::macos
