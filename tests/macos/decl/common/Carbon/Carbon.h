// Text input sources and secure input, as far as the back end uses them.
#pragma once
#include <CoreFoundation/CoreFoundation.h>

extern "C" {

typedef struct __TISInputSource* TISInputSourceRef;
extern const CFStringRef kTISPropertyInputSourceID;
extern const CFStringRef kTISPropertyInputSourceCategory;
extern const CFStringRef kTISPropertyInputSourceIsASCIICapable;
extern const CFStringRef kTISPropertyInputSourceIsSelectCapable;
extern const CFStringRef kTISCategoryKeyboardInputSource;
TISInputSourceRef TISCopyCurrentKeyboardInputSource(void) __attribute__((cf_returns_retained));
CFArrayRef TISCreateInputSourceList(CFDictionaryRef, Boolean);
void* TISGetInputSourceProperty(TISInputSourceRef, CFStringRef);
OSStatus TISSelectInputSource(TISInputSourceRef);

Boolean IsSecureEventInputEnabled(void);
}
