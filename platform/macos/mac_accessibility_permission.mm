#include "platform/accessibility_permission.hpp"
#include "platform/macos/mac_factories.hpp"

#import <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

namespace orvel::macos {

namespace {

class MacAccessibilityPermission final : public AccessibilityPermission {
public:
    [[nodiscard]] bool isTrusted() const override { return AXIsProcessTrusted(); }
    [[nodiscard]] bool isTrustedOrPrompt() override {
        @autoreleasepool {
            NSDictionary* options = @{(__bridge NSString*)kAXTrustedCheckOptionPrompt : @(YES)};
            return AXIsProcessTrustedWithOptions((__bridge CFDictionaryRef)options);
        }
    }
};

}  // namespace

std::unique_ptr<AccessibilityPermission> makeAccessibilityPermission() {
    return std::make_unique<MacAccessibilityPermission>();
}

}  // namespace orvel::macos
