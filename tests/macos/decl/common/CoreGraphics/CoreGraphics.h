// Quartz: events, displays, the window server's list. As far as the back end uses it.
#pragma once
#include <CoreFoundation/CoreFoundation.h>
#ifndef __APPLE__
#import <Foundation/NSGeometry.h>
#endif

extern "C" {

#ifdef __APPLE__
typedef double CGFloat;
typedef struct CGPoint {
    CGFloat x;
    CGFloat y;
} CGPoint;
typedef struct CGSize {
    CGFloat width;
    CGFloat height;
} CGSize;
typedef struct CGRect {
    CGPoint origin;
    CGSize size;
} CGRect;
#else
typedef NSPoint CGPoint;
typedef NSSize CGSize;
typedef NSRect CGRect;
#endif
extern const CGRect CGRectNull;
static inline CGPoint CGPointMake(CGFloat x, CGFloat y) {
    CGPoint point;
    point.x = x;
    point.y = y;
    return point;
}
static inline CGSize CGSizeMake(CGFloat width, CGFloat height) {
    CGSize size;
    size.width = width;
    size.height = height;
    return size;
}
static inline CGRect CGRectMake(CGFloat x, CGFloat y, CGFloat width, CGFloat height) {
    CGRect rect;
    rect.origin = CGPointMake(x, y);
    rect.size = CGSizeMake(width, height);
    return rect;
}
bool CGRectMakeWithDictionaryRepresentation(CFDictionaryRef, CGRect*);

// Events
typedef struct __CGEvent* CGEventRef;
typedef struct __CGEventSource* CGEventSourceRef;
typedef struct __CGEventTapProxy* CGEventTapProxy;
typedef uint16_t CGKeyCode;
typedef uint64_t CGEventMask;
#define CGEventMaskBit(type) ((CGEventMask)1 << (type))

MAC_ENUM(uint32_t, CGEventType){
    kCGEventNull = 0,
    kCGEventLeftMouseDown = 1,
    kCGEventLeftMouseUp = 2,
    kCGEventRightMouseDown = 3,
    kCGEventRightMouseUp = 4,
    kCGEventKeyDown = 10,
    kCGEventKeyUp = 11,
    kCGEventFlagsChanged = 12,
    kCGEventScrollWheel = 22,
    kCGEventOtherMouseDown = 25,
    kCGEventOtherMouseUp = 26,
    kCGEventTapDisabledByTimeout = 0xFFFFFFFE,
    kCGEventTapDisabledByUserInput = 0xFFFFFFFF,
};
MAC_OPTIONS(uint64_t, CGEventFlags){
    kCGEventFlagMaskAlphaShift = 0x10000,
    kCGEventFlagMaskShift = 0x20000,
    kCGEventFlagMaskControl = 0x40000,
    kCGEventFlagMaskAlternate = 0x80000,
    kCGEventFlagMaskCommand = 0x100000,
    kCGEventFlagMaskNumericPad = 0x200000,
    kCGEventFlagMaskSecondaryFn = 0x800000,
};
MAC_ENUM(uint32_t, CGEventField){
    kCGMouseEventButtonNumber = 3,
    kCGKeyboardEventAutorepeat = 8,
    kCGKeyboardEventKeycode = 9,
    kCGScrollWheelEventDeltaAxis1 = 11,
    kCGEventSourceUserData = 42,
    kCGScrollWheelEventIsContinuous = 88,
    kCGScrollWheelEventPointDeltaAxis1 = 96,
};
MAC_ENUM(int32_t, CGEventSourceStateID){
    kCGEventSourceStatePrivate = -1,
    kCGEventSourceStateCombinedSessionState = 0,
    kCGEventSourceStateHIDSystemState = 1,
};
MAC_ENUM(uint32_t, CGEventTapLocation){
    kCGHIDEventTap = 0,
    kCGSessionEventTap,
    kCGAnnotatedSessionEventTap,
};
MAC_ENUM(uint32_t, CGEventTapPlacement){
    kCGHeadInsertEventTap = 0,
    kCGTailAppendEventTap,
};
MAC_ENUM(uint32_t, CGEventTapOptions){
    kCGEventTapOptionDefault = 0,
    kCGEventTapOptionListenOnly = 1,
};
typedef CGEventRef (*CGEventTapCallBack)(CGEventTapProxy, CGEventType, CGEventRef, void*);

CFMachPortRef CGEventTapCreate(CGEventTapLocation, CGEventTapPlacement, CGEventTapOptions,
                               CGEventMask, CGEventTapCallBack, void*);
void CGEventTapEnable(CFMachPortRef, bool);
MAC_ENUM(int32_t, CGError){
    kCGErrorSuccess = 0,
};
typedef struct __CGEventTapInformation {
    uint32_t eventTapID;
    CGEventTapLocation tapPoint;
    CGEventTapOptions options;
    CGEventMask eventsOfInterest;
    pid_t tappingProcess;
    pid_t processBeingTapped;
    bool enabled;
    float minUsecLatency;
    float avgUsecLatency;
    float maxUsecLatency;
} CGEventTapInformation;
CGError CGGetEventTapList(uint32_t, CGEventTapInformation*, uint32_t*);
bool CGEventTapIsEnabled(CFMachPortRef);
CGEventSourceRef CGEventSourceCreate(CGEventSourceStateID);
CGEventFlags CGEventSourceFlagsState(CGEventSourceStateID);
bool CGEventSourceKeyState(CGEventSourceStateID, CGKeyCode);
CGEventRef CGEventCreateKeyboardEvent(CGEventSourceRef, CGKeyCode, bool);
void CGEventSetType(CGEventRef, CGEventType);
CGEventFlags CGEventGetFlags(CGEventRef);
void CGEventSetFlags(CGEventRef, CGEventFlags);
int64_t CGEventGetIntegerValueField(CGEventRef, CGEventField);
void CGEventSetIntegerValueField(CGEventRef, CGEventField, int64_t);
void CGEventPost(CGEventTapLocation, CGEventRef);
bool CGPreflightPostEventAccess(void);

// Displays and sessions
typedef uint32_t CGDirectDisplayID;
CGDirectDisplayID CGMainDisplayID(void);
UInt32 CGDisplayIsAsleep(CGDirectDisplayID);
#define kCGSessionOnConsoleKey CFSTR("kCGSSessionOnConsoleKey")
CFDictionaryRef CGSessionCopyCurrentDictionary(void);

// Windows and pictures
typedef struct CGImage* CGImageRef;
typedef uint32_t CGWindowID;
MAC_OPTIONS(uint32_t, CGWindowListOption){
    kCGWindowListOptionAll = 0,
    kCGWindowListOptionOnScreenOnly = 1 << 0,
    kCGWindowListOptionIncludingWindow = 1 << 3,
    kCGWindowListExcludeDesktopElements = 1 << 4,
};
MAC_OPTIONS(uint32_t, CGWindowImageOption){
    kCGWindowImageDefault = 0,
    kCGWindowImageBoundsIgnoreFraming = 1 << 0,
};
#define kCGNullWindowID ((CGWindowID)0)
extern const CFStringRef kCGWindowNumber;
extern const CFStringRef kCGWindowOwnerPID;
extern const CFStringRef kCGWindowLayer;
extern const CFStringRef kCGWindowName;
extern const CFStringRef kCGWindowBounds;
CFArrayRef CGWindowListCopyWindowInfo(CGWindowListOption, CGWindowID);
__attribute__((availability(macos, introduced = 10.5, deprecated = 14.0, obsoleted = 15.0)))
CGImageRef CGWindowListCreateImage(CGRect, CGWindowListOption, CGWindowID, CGWindowImageOption);
bool CGPreflightScreenCaptureAccess(void);
bool CGRequestScreenCaptureAccess(void);
size_t CGImageGetWidth(CGImageRef);
size_t CGImageGetHeight(CGImageRef);

typedef struct CGColorSpace* CGColorSpaceRef;
typedef struct CGContext* CGContextRef;
MAC_ENUM(uint32_t, CGImageAlphaInfo){kCGImageAlphaPremultipliedFirst = 2};
MAC_OPTIONS(uint32_t, CGBitmapInfo){kCGBitmapByteOrder32Little = 2 << 12};
extern const CFStringRef kCGColorSpaceSRGB;
CGColorSpaceRef CGColorSpaceCreateWithName(CFStringRef);
CGContextRef CGBitmapContextCreate(void*, size_t, size_t, size_t, size_t, CGColorSpaceRef, uint32_t);
void CGContextDrawImage(CGContextRef, CGRect, CGImageRef);
}
