// Core Foundation, as far as the back end uses it.
#pragma once
#include <mac_macros.h>
#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>
#include <sys/types.h>

extern "C" {

typedef unsigned char Boolean;
typedef uint8_t UInt8;
typedef uint16_t UInt16;
typedef uint32_t UInt32;
typedef int32_t SInt32;
typedef int32_t OSStatus;
typedef UInt32 FourCharCode;
typedef long CFIndex;
typedef unsigned long CFTypeID;
typedef unsigned long CFOptionFlags;
typedef double CFTimeInterval;
typedef CFTimeInterval CFAbsoluteTime;
typedef struct {
    CFIndex location;
    CFIndex length;
} CFRange;

typedef const void* CFTypeRef;
typedef CFTypeRef CFPropertyListRef;
typedef const struct __CFAllocator* CFAllocatorRef;
typedef const struct __CFString* CFStringRef;
typedef const struct __CFArray* CFArrayRef;
typedef const struct __CFDictionary* CFDictionaryRef;
typedef struct __CFDictionary* CFMutableDictionaryRef;
typedef const struct __CFNumber* CFNumberRef;
typedef const struct __CFBoolean* CFBooleanRef;
typedef const struct __CFData* CFDataRef;
typedef struct __CFRunLoop* CFRunLoopRef;
typedef struct __CFRunLoopSource* CFRunLoopSourceRef;
typedef struct __CFRunLoopTimer* CFRunLoopTimerRef;
typedef struct __CFMachPort* CFMachPortRef;
typedef CFStringRef CFRunLoopMode;

#ifdef __APPLE__
#define CFSTR(text) ((CFStringRef)__builtin___CFStringMakeConstantString("" text ""))
#else
#define CFSTR(text) ((CFStringRef) @text)
#endif

extern const CFAllocatorRef kCFAllocatorDefault;
extern const CFBooleanRef kCFBooleanTrue;
extern const CFBooleanRef kCFBooleanFalse;
extern const CFRunLoopMode kCFRunLoopDefaultMode;
extern const CFRunLoopMode kCFRunLoopCommonModes;

CFTypeRef CFRetain(CFTypeRef);
void CFRelease(CFTypeRef);
Boolean CFEqual(CFTypeRef, CFTypeRef);
CFTypeID CFGetTypeID(CFTypeRef);

typedef UInt32 CFStringEncoding;
enum : CFStringEncoding { kCFStringEncodingUTF8 = 0x08000100, kCFStringEncodingISOLatin1 = 0x0201 };
CFTypeID CFStringGetTypeID(void);
CFStringRef CFStringCreateWithBytes(CFAllocatorRef, const UInt8*, CFIndex, CFStringEncoding,
                                    Boolean);
CFIndex CFStringGetLength(CFStringRef);
CFIndex CFStringGetBytes(CFStringRef, CFRange, CFStringEncoding, UInt8, Boolean, UInt8*, CFIndex,
                         CFIndex*);

MAC_ENUM(CFIndex, CFNumberType){
    kCFNumberSInt32Type = 3,
    kCFNumberSInt64Type = 4,
    kCFNumberDoubleType = 13,
};
CFTypeID CFBooleanGetTypeID(void);
Boolean CFBooleanGetValue(CFBooleanRef);
CFTypeID CFNumberGetTypeID(void);
CFNumberRef CFNumberCreate(CFAllocatorRef, CFNumberType, const void*);
Boolean CFNumberGetValue(CFNumberRef, CFNumberType, void*);
Boolean CFNumberIsFloatType(CFNumberRef);

CFTypeID CFArrayGetTypeID(void);
CFIndex CFArrayGetCount(CFArrayRef);
const void* CFArrayGetValueAtIndex(CFArrayRef, CFIndex);
CFTypeID CFDictionaryGetTypeID(void);
const void* CFDictionaryGetValue(CFDictionaryRef, const void*);
CFDataRef CFDataCreate(CFAllocatorRef, const UInt8*, CFIndex);

CFRunLoopSourceRef CFMachPortCreateRunLoopSource(CFAllocatorRef, CFMachPortRef, CFIndex);
void CFMachPortInvalidate(CFMachPortRef);

typedef struct {
    CFIndex version;
    void* info;
    const void* (*retain)(const void*);
    void (*release)(const void*);
    CFStringRef (*copyDescription)(const void*);
} CFRunLoopTimerContext;
typedef void (*CFRunLoopTimerCallBack)(CFRunLoopTimerRef, void*);
CFRunLoopRef CFRunLoopGetMain(void);
void CFRunLoopAddSource(CFRunLoopRef, CFRunLoopSourceRef, CFRunLoopMode);
void CFRunLoopRemoveSource(CFRunLoopRef, CFRunLoopSourceRef, CFRunLoopMode);
CFRunLoopTimerRef CFRunLoopTimerCreate(CFAllocatorRef, CFAbsoluteTime, CFTimeInterval,
                                       CFOptionFlags, CFIndex, CFRunLoopTimerCallBack,
                                       CFRunLoopTimerContext*);
void CFRunLoopAddTimer(CFRunLoopRef, CFRunLoopTimerRef, CFRunLoopMode);
void CFRunLoopTimerInvalidate(CFRunLoopTimerRef);
CFAbsoluteTime CFAbsoluteTimeGetCurrent(void);
}
