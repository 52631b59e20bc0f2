#include "platform/haptics.hpp"

#include "platform/macos/mac_factories.hpp"

#import <AppKit/AppKit.h>

namespace orvel::macos {

namespace {

class MacHaptics final : public Haptics {
public:
    void tap() override {
        [NSHapticFeedbackManager.defaultPerformer
            performFeedbackPattern:NSHapticFeedbackPatternGeneric
                   performanceTime:NSHapticFeedbackPerformanceTimeNow];
    }
};

}  // namespace

std::unique_ptr<Haptics> makeHaptics() { return std::make_unique<MacHaptics>(); }

}  // namespace orvel::macos
