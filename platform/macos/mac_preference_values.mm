#include "platform/macos/mac_preference_values.hpp"

#include "platform/macos/mac_text.hpp"

#import <Foundation/Foundation.h>

namespace orvel::macos {

namespace {

PreferenceValue ofNumber(CFTypeRef object) {
    if (CFGetTypeID(object) == CFBooleanGetTypeID()) {
        return static_cast<bool>(CFBooleanGetValue(static_cast<CFBooleanRef>(object)));
    }
    const auto number = static_cast<CFNumberRef>(object);
    if (CFNumberIsFloatType(number)) {
        double value = 0;
        CFNumberGetValue(number, kCFNumberDoubleType, &value);
        return value;
    }
    std::int64_t value = 0;
    CFNumberGetValue(number, kCFNumberSInt64Type, &value);
    return value;
}

PreferenceValue ofArray(NSArray* array) {
    StringList texts;
    for (id element in array) {
        if (![element isKindOfClass:[NSString class]]) return ForeignPreference{};
        texts.push_back(utf8(element));
    }
    return texts;
}

PreferenceValue valueOf(id object) {
    if ([object isKindOfClass:[NSString class]]) return utf8(object);
    if ([object isKindOfClass:[NSNumber class]]) return ofNumber((__bridge CFTypeRef)object);
    if ([object isKindOfClass:[NSArray class]]) return ofArray(object);
    if ([object isKindOfClass:[NSData class]]) {
        NSData* data = object;
        const auto* bytes = static_cast<const std::byte*>(data.bytes);
        return PreferenceData(bytes, bytes + data.length);
    }
    return ForeignPreference{};
}

struct ToObject {
    CfRef<CFTypeRef> operator()(bool value) const {
        return CfRef<CFTypeRef>::retaining(value ? kCFBooleanTrue : kCFBooleanFalse);
    }
    CfRef<CFTypeRef> operator()(std::int64_t value) const {
        return CfRef<CFTypeRef>(CFNumberCreate(kCFAllocatorDefault, kCFNumberSInt64Type, &value));
    }
    CfRef<CFTypeRef> operator()(double value) const {
        return CfRef<CFTypeRef>(CFNumberCreate(kCFAllocatorDefault, kCFNumberDoubleType, &value));
    }
    CfRef<CFTypeRef> operator()(const std::string& value) const {
        return CfRef<CFTypeRef>::retaining(cfString(value).get());
    }
    CfRef<CFTypeRef> operator()(const StringList& value) const {
        NSMutableArray* texts = [NSMutableArray array];
        for (const std::string& element : value) {
            const auto text = cfString(element);
            [texts addObject:(__bridge NSString*)text.get()];
        }
        return CfRef<CFTypeRef>::retaining((__bridge CFTypeRef)texts);
    }
    CfRef<CFTypeRef> operator()(const PreferenceData& value) const {
        return CfRef<CFTypeRef>(CFDataCreate(kCFAllocatorDefault,
                                             reinterpret_cast<const UInt8*>(value.data()),
                                             static_cast<CFIndex>(value.size())));
    }
    CfRef<CFTypeRef> operator()(ForeignPreference) const { return {}; }
};

}  // namespace

PreferenceValue preferenceOf(CFTypeRef object) { return valueOf((__bridge id)object); }

CfRef<CFTypeRef> objectOf(const PreferenceValue& value) { return std::visit(ToObject{}, value); }

}  // namespace orvel::macos
