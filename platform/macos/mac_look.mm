#include "platform/macos/mac_look.hpp"

#import <AppKit/AppKit.h>

namespace orvel::macos {

Look readLook() {
    @autoreleasepool {
        NSAppearanceName name = [NSApp.effectiveAppearance
            bestMatchFromAppearancesWithNames:@[ NSAppearanceNameAqua, NSAppearanceNameDarkAqua ]];
        NSWorkspace* workspace = NSWorkspace.sharedWorkspace;
        return {.isDark = static_cast<bool>([name isEqualToString:NSAppearanceNameDarkAqua]),
                .isTranslucent = !workspace.accessibilityDisplayShouldReduceTransparency,
                .isStill = static_cast<bool>(workspace.accessibilityDisplayShouldReduceMotion)};
    }
}

LookNotices::LookNotices(std::function<void()> told) {
    // The application itself hears of a new theme at the same time, perhaps after us.
    const NoticeHandler soon = [told = std::move(told)](CFTypeRef) {
        dispatch_async(dispatch_get_main_queue(), ^{
          told();
        });
    };
    observations_.emplace_back(NoticeCenter::distributed,
                               CFSTR("AppleInterfaceThemeChangedNotification"), soon);
    observations_.emplace_back(
        NoticeCenter::workspace,
        (__bridge CFStringRef)NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification, soon);
}

}  // namespace orvel::macos
