#include "platform/macos/mac_property_list.hpp"

#include "platform/base/base64.hpp"
#include "platform/macos/mac_preference_values.hpp"
#include "platform/macos/mac_text.hpp"

#import <Foundation/Foundation.h>

namespace orvel::macos {

namespace {

Json jsonOf(id object);

Json jsonOfNumber(CFTypeRef object) {
    const PreferenceValue number = preferenceOf(object);
    if (const bool* flag = std::get_if<bool>(&number)) return Json(*flag);
    if (const auto* integer = std::get_if<std::int64_t>(&number)) return Json(*integer);
    return Json(std::get<double>(number));
}

Json jsonOfArray(NSArray* array) {
    JsonArray values;
    for (id element in array) values.push_back(jsonOf(element));
    return Json(std::move(values));
}

Json jsonOfDictionary(NSDictionary* dictionary) {
    JsonObject members;
    for (NSString* key in dictionary) {
        members.emplace_back(utf8(key), jsonOf([dictionary objectForKey:key]));
    }
    return Json(std::move(members));
}

Json jsonOfData(NSData* data) {
    const auto* bytes = static_cast<const std::byte*>(data.bytes);
    return Json(base64Encode({bytes, data.length}));
}

Json jsonOf(id object) {
    if ([object isKindOfClass:[NSString class]]) return Json(utf8(object));
    if ([object isKindOfClass:[NSNumber class]]) return jsonOfNumber((__bridge CFTypeRef)object);
    if ([object isKindOfClass:[NSArray class]]) return jsonOfArray(object);
    if ([object isKindOfClass:[NSDictionary class]]) return jsonOfDictionary(object);
    if ([object isKindOfClass:[NSData class]]) return jsonOfData(object);
    NSString* text = [object description];
    return Json(utf8(text));
}

}  // namespace

Result<CfRef<CFTypeRef>> parsePropertyList(std::span<const std::byte> bytes) {
    @autoreleasepool {
        NSData* data = [NSData dataWithBytes:bytes.data() length:bytes.size()];
        NSError* error = nil;
        id list = [NSPropertyListSerialization propertyListWithData:data
                                                            options:NSPropertyListImmutable
                                                             format:nullptr
                                                              error:&error];
        if (list == nil) return failureOf(error);
        return CfRef<CFTypeRef>::retaining((__bridge CFTypeRef)list);
    }
}

Result<Json> jsonOfPropertyList(std::span<const std::byte> bytes) {
    @autoreleasepool {
        const auto list = parsePropertyList(bytes);
        if (!list) return Failure{list.error()};
        return jsonOf((__bridge id)list.value().get());
    }
}

}  // namespace orvel::macos
