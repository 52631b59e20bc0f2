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
            NSScreen* main = NSScreen.mainScreen;
            if (main != nil) described.push_back(describe(main));
            for (NSScreen* screen in NSScreen.screens) {
                const Screen other = describe(screen);
                if (described.empty() || other != described.front()) described.push_back(other);
            }
            return described;
        }
    }
};

}  // namespace

std::unique_ptr<Screens> makeScreens() { return std::make_unique<MacScreens>(); }

}  // namespace orvel::macos
