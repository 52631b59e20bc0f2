#include "fake_support.hpp"

#include <atomic>
#include <cstring>

namespace {

std::atomic<int> references = 0;

bool isBoolean(id object) {
    return [object isKindOfClass:[NSNumber class]] &&
           strcmp([object objCType], @encode(BOOL)) == 0 &&
           [NSStringFromClass([object class]) isEqual:@"NSBoolNumber"];
}

bool isFloat(NSNumber* number) {
    return strcmp(number.objCType, @encode(double)) == 0 ||
           strcmp(number.objCType, @encode(float)) == 0;
}

enum : CFTypeID { kOther = 1, kString, kBoolean, kNumber, kArray, kDictionary, kData };

}  // namespace

namespace fake {

int liveReferences() { return references; }
void countReference(int change) { references += change; }

}  // namespace fake

using fake::object;

extern "C" {

const CFAllocatorRef kCFAllocatorDefault = nullptr;
const CFRunLoopMode kCFRunLoopDefaultMode = CFSTR("kCFRunLoopDefaultMode");
const CFRunLoopMode kCFRunLoopCommonModes = CFSTR("kCFRunLoopCommonModes");

CFTypeRef CFRetain(CFTypeRef reference) {
    fake::countReference(1);
    return (CFTypeRef)(void*)[object(reference) retain];
}
void CFRelease(CFTypeRef reference) {
    fake::countReference(-1);
    [object(reference) release];
}
Boolean CFEqual(CFTypeRef one, CFTypeRef other) { return [object(one) isEqual:object(other)]; }

CFTypeID CFGetTypeID(CFTypeRef reference) {
    id it = object(reference);
    if ([it isKindOfClass:[NSString class]]) return kString;
    if (isBoolean(it)) return kBoolean;
    if ([it isKindOfClass:[NSNumber class]]) return kNumber;
    if ([it isKindOfClass:[NSArray class]]) return kArray;
    if ([it isKindOfClass:[NSDictionary class]]) return kDictionary;
    if ([it isKindOfClass:[NSData class]]) return kData;
    if ([NSStringFromClass([it class]) isEqual:@"FakeElement"]) return AXUIElementGetTypeID();
    if ([NSStringFromClass([it class]) isEqual:@"FakeValue"]) return AXValueGetTypeID();
    return kOther;
}
CFTypeID CFStringGetTypeID(void) { return kString; }
CFTypeID CFBooleanGetTypeID(void) { return kBoolean; }
CFTypeID CFNumberGetTypeID(void) { return kNumber; }
CFTypeID CFArrayGetTypeID(void) { return kArray; }
CFTypeID CFDictionaryGetTypeID(void) { return kDictionary; }

CFStringRef CFStringCreateWithBytes(CFAllocatorRef, const UInt8* bytes, CFIndex length,
                                    CFStringEncoding encoding, Boolean) {
    const NSStringEncoding known =
        encoding == kCFStringEncodingUTF8 ? NSUTF8StringEncoding : NSISOLatin1StringEncoding;
    NSString* made = [[[NSString alloc] initWithBytes:bytes length:length
                                             encoding:known] autorelease];
    return fake::give<CFStringRef>(made);
}
CFIndex CFStringGetLength(CFStringRef text) { return [(NSString*)object(text) length]; }
CFIndex CFStringGetBytes(CFStringRef text, CFRange range, CFStringEncoding, UInt8, Boolean,
                         UInt8* buffer, CFIndex size, CFIndex* used) {
    NSString* part =
        [(NSString*)object(text) substringWithRange:NSMakeRange(range.location, range.length)];
    NSData* data = [part dataUsingEncoding:NSUTF8StringEncoding];
    if (used != nullptr) *used = data.length;
    if (buffer != nullptr) memcpy(buffer, data.bytes, std::min<CFIndex>(size, data.length));
    return range.length;
}

Boolean CFBooleanGetValue(CFBooleanRef boolean) { return [object(boolean) boolValue]; }
CFNumberRef CFNumberCreate(CFAllocatorRef, CFNumberType type, const void* value) {
    if (type == kCFNumberDoubleType) {
        return fake::give<CFNumberRef>([NSNumber numberWithDouble:*(const double*)value]);
    }
    return fake::give<CFNumberRef>([NSNumber numberWithLongLong:*(const int64_t*)value]);
}
Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value) {
    NSNumber* it = object(number);
    switch (type) {
        case kCFNumberSInt32Type:
            *(int32_t*)value = it.intValue;
            break;
        case kCFNumberSInt64Type:
            *(int64_t*)value = it.longLongValue;
            break;
        case kCFNumberDoubleType:
            *(double*)value = it.doubleValue;
            break;
    }
    return true;
}
Boolean CFNumberIsFloatType(CFNumberRef number) { return isFloat(object(number)); }

CFIndex CFArrayGetCount(CFArrayRef array) { return [(NSArray*)object(array) count]; }
const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index) {
    return [(NSArray*)object(array) objectAtIndex:index];
}
const void* CFDictionaryGetValue(CFDictionaryRef dictionary, const void* key) {
    return [(NSDictionary*)object(dictionary) objectForKey:object(key)];
}
CFDataRef CFDataCreate(CFAllocatorRef, const UInt8* bytes, CFIndex length) {
    return fake::give<CFDataRef>([NSData dataWithBytes:bytes length:length]);
}
}
