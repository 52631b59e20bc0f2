#include "platform/preference_list.hpp"

#include "platform/macos/mac_preference_values.hpp"
#include "platform/macos/mac_property_list.hpp"
#include "platform/macos/mac_text.hpp"

#import <Foundation/Foundation.h>

#include <algorithm>
#include <span>

namespace orvel {

Result<PreferenceEntries> readPreferenceList(std::string_view bytes) {
    @autoreleasepool {
        const auto parsed = macos::parsePropertyList(std::as_bytes(std::span(bytes)));
        if (!parsed) return Failure{parsed.error()};
        id list = (__bridge id)parsed.value().get();
        if (![list isKindOfClass:[NSDictionary class]])
            return Failure{"the root of the property list is no dictionary"};
        NSDictionary* dictionary = list;
        PreferenceEntries entries;
        for (NSString* key in dictionary) {
            const auto object = (__bridge CFTypeRef)[dictionary objectForKey:key];
            entries.emplace_back(macos::utf8(key), macos::preferenceOf(object));
        }
        std::ranges::sort(entries, {}, &PreferenceEntries::value_type::first);
        return entries;
    }
}

std::string writePreferenceList(const PreferenceEntries& entries) {
    @autoreleasepool {
        NSMutableDictionary* list = [NSMutableDictionary dictionary];
        for (const auto& [name, value] : entries) {
            const auto object = macos::objectOf(value);
            const auto key = macos::cfString(name);
            if (!object) continue;
            [list setObject:(__bridge id)object.get() forKey:(__bridge NSString*)key.get()];
        }
        NSData* data =
            [NSPropertyListSerialization dataWithPropertyList:list
                                                       format:NSPropertyListXMLFormat_v1_0
                                                      options:0
                                                        error:nullptr];
        return {static_cast<const char*>(data.bytes), data.length};
    }
}

}  // namespace orvel
