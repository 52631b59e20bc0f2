// Accessibility, as far as the back end uses it.
#pragma once
#include <CoreGraphics/CoreGraphics.h>

extern "C" {

#define MAC_RETURNS_RETAINED __attribute__((cf_returns_retained))

typedef const struct __AXUIElement* AXUIElementRef;
typedef const struct __AXValue* AXValueRef;
MAC_ENUM(int32_t, AXError){
    kAXErrorSuccess = 0,
    kAXErrorFailure = -25200,
    kAXErrorIllegalArgument = -25201,
    kAXErrorInvalidUIElement = -25202,
    kAXErrorCannotComplete = -25204,
    kAXErrorAttributeUnsupported = -25205,
    kAXErrorAPIDisabled = -25211,
    kAXErrorNoValue = -25212,
};
MAC_ENUM(uint32_t, AXValueType){
    kAXValueTypeCGPoint = 1,
    kAXValueTypeCGSize = 2,
    kAXValueTypeCGRect = 3,
    kAXValueTypeAXError = 5,
};
MAC_OPTIONS(uint32_t, AXCopyMultipleAttributeOptions){
    kAXCopyMultipleAttributeOptionStopOnError = 0x1,
};

extern CFStringRef kAXTrustedCheckOptionPrompt;
Boolean AXIsProcessTrusted(void);
Boolean AXIsProcessTrustedWithOptions(CFDictionaryRef);

CFTypeID AXUIElementGetTypeID(void);
AXUIElementRef AXUIElementCreateApplication(pid_t) MAC_RETURNS_RETAINED;
AXUIElementRef AXUIElementCreateSystemWide(void) MAC_RETURNS_RETAINED;
AXError AXUIElementSetMessagingTimeout(AXUIElementRef, float);
AXError AXUIElementGetPid(AXUIElementRef, pid_t*);
AXError AXUIElementCopyAttributeValue(AXUIElementRef, CFStringRef,
                                      CFTypeRef* MAC_RETURNS_RETAINED);
AXError AXUIElementCopyMultipleAttributeValues(AXUIElementRef, CFArrayRef,
                                               AXCopyMultipleAttributeOptions,
                                               CFArrayRef* MAC_RETURNS_RETAINED);
AXError AXUIElementCopyParameterizedAttributeValue(AXUIElementRef, CFStringRef, CFTypeRef,
                                                   CFTypeRef* MAC_RETURNS_RETAINED);
AXError AXUIElementSetAttributeValue(AXUIElementRef, CFStringRef, CFTypeRef);
AXError AXUIElementPerformAction(AXUIElementRef, CFStringRef);

CFTypeID AXValueGetTypeID(void);
AXValueRef AXValueCreate(AXValueType, const void*) MAC_RETURNS_RETAINED;
Boolean AXValueGetValue(AXValueRef, AXValueType, void*);

#define kAXFocusedWindowAttribute CFSTR("AXFocusedWindow")
#define kAXFocusedUIElementAttribute CFSTR("AXFocusedUIElement")
#define kAXFocusedAttribute CFSTR("AXFocused")
#define kAXWindowsAttribute CFSTR("AXWindows")
#define kAXMainAttribute CFSTR("AXMain")
#define kAXPositionAttribute CFSTR("AXPosition")
#define kAXSizeAttribute CFSTR("AXSize")
#define kAXMinimizedAttribute CFSTR("AXMinimized")
#define kAXRoleAttribute CFSTR("AXRole")
#define kAXTitleAttribute CFSTR("AXTitle")
#define kAXSelectedTextRangeAttribute CFSTR("AXSelectedTextRange")
#define kAXBoundsForRangeParameterizedAttribute CFSTR("AXBoundsForRange")
#define kAXRaiseAction CFSTR("AXRaise")
}
