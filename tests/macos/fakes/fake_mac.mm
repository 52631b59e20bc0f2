#include "fake_mac.hpp"

#include "fake_support.hpp"

extern "C" {
extern const void* kCFBooleanTrueStore __asm__("kCFBooleanTrue");
extern const void* kCFBooleanFalseStore __asm__("kCFBooleanFalse");
}

/// The library's own give the person's real folders, whatever the environment says.
NSString* NSHomeDirectory(void) {
    const char* home = getenv("HOME");
    return [NSString stringWithUTF8String:home == nullptr ? "/nowhere" : home];
}
NSString* NSTemporaryDirectory(void) { return NSHomeDirectory(); }

namespace fake {

namespace {

World current;

}  // namespace

World& world() { return current; }

void reset() {
    static NSAutoreleasePool* outermost = [NSAutoreleasePool new];
    static_cast<void>(outermost);
    installBlocks();
    resetRunLoop();
    current = {};
    kCFBooleanTrueStore = (const void*)[NSNumber numberWithBool:YES];
    kCFBooleanFalseStore = (const void*)[NSNumber numberWithBool:NO];
    resetEvents();
    resetNotifications();
    resetInterface();
}

}  // namespace fake
