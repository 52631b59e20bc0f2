#include "fake_mac.hpp"

#include "fake_support.hpp"

extern "C" {
extern const void* kCFBooleanTrueStore __asm__("kCFBooleanTrue");
extern const void* kCFBooleanFalseStore __asm__("kCFBooleanFalse");
}

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
