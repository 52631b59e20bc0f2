#pragma once

#include "fake_mac.hpp"

#import <AppKit/AppKit.h>

// What the parts of the fakes share. Every Core Foundation object is an Objective-C object here.
namespace fake {

inline id object(CFTypeRef reference) { return (id)(void*)reference; }

void countReference(int change);

/// Gives a reference away, as functions named Create or Copy do.
template <typename Ref>
Ref give(id owned) {
    if (owned != nil) countReference(1);
    return (Ref)(void*)[owned retain];
}

inline NSString* text(const std::string& bytes) {
    return [NSString stringWithUTF8String:bytes.c_str()];
}
inline std::string bytes(NSString* text) { return text == nil ? "" : text.UTF8String; }

/// Runs `work` on another thread that belongs to no queue.
void runOnOtherThread(std::function<void()> work, int quality = 0);

NSPasteboard* freshPasteboard();
CGImageRef makeImage(int width, int height);
NSNotificationCenter* centerOf(Center center);

// Each part puts itself back.
void resetRunLoop();
void resetEvents();
void resetNotifications();
void resetInterface();
void resetBooleans();
void installBlocks();

}  // namespace fake
