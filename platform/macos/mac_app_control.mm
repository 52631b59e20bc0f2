#include "platform/app_control.hpp"

#include "platform/macos/mac_factories.hpp"

#import <AppKit/AppKit.h>

#include <unistd.h>

namespace orvel::macos {

namespace {

bool isStray(NSWindow* window) {
    if ([window isKindOfClass:[NSPanel class]]) return false;
    return [NSStringFromClass([window class]) rangeOfString:@"StatusBar"].location == NSNotFound;
}

class MacAppControl final : public AppControl {
public:
    [[nodiscard]] ProcessId ownPid() const override { return getpid(); }

    [[nodiscard]] std::vector<ProcessId> runningInstances() const override {
        @autoreleasepool {
            NSString* identifier = NSBundle.mainBundle.bundleIdentifier;
            // Run outside of its bundle, the program has no identifier and no copies to find.
            if (identifier == nil) return {ownPid()};
            std::vector<ProcessId> pids;
            for (NSRunningApplication* copy in
                 [NSRunningApplication runningApplicationsWithBundleIdentifier:identifier]) {
                pids.push_back(copy.processIdentifier);
            }
            return pids;
        }
    }

    void activateSelf() override { [NSApp activateIgnoringOtherApps:YES]; }

    void closeStrayWindows() override {
        @autoreleasepool {
            for (NSWindow* window in NSApp.windows) {
                if (isStray(window)) [window close];
            }
        }
    }

    void terminate() override { [NSApp terminate:nil]; }
};

}  // namespace

std::unique_ptr<AppControl> makeAppControl() { return std::make_unique<MacAppControl>(); }

}  // namespace orvel::macos
