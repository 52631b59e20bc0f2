#include "platform/preference_store.hpp"

#include "platform/macos/mac_cf_ref.hpp"
#include "platform/macos/mac_factories.hpp"
#include "platform/macos/mac_text.hpp"

#import <Foundation/Foundation.h>

#include <deque>
#include <map>

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
        texts.push_back(utf8((__bridge CFStringRef)element));
    }
    return texts;
}

PreferenceValue ofObject(id object) {
    if ([object isKindOfClass:[NSString class]]) return utf8((__bridge CFStringRef)object);
    if ([object isKindOfClass:[NSNumber class]]) return ofNumber((__bridge CFTypeRef)object);
    if ([object isKindOfClass:[NSArray class]]) return ofArray(object);
    if ([object isKindOfClass:[NSData class]]) {
        NSData* data = object;
        const auto* bytes = static_cast<const std::byte*>(data.bytes);
        return PreferenceData(bytes, bytes + data.length);
    }
    return ForeignPreference{};
}

/// The stored object for each kind of value; null for one that this system never writes.
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

/// Over the user's defaults, which follow what other processes write. The object that was read
/// last is kept: as long as the defaults answer with the same one, its value needs no reading.
class MacPreferenceStore final : public PreferenceStore {
public:
    [[nodiscard]] PreferenceHandle handle(std::string_view key) override {
        const auto known = handles_.find(key);
        if (known != handles_.end()) return known->second;
        const auto handle = static_cast<PreferenceHandle>(entries_.size());
        entries_.emplace_back().key = cfString(key);
        handles_.emplace(key, handle);
        return handle;
    }

    [[nodiscard]] const PreferenceValue* value(PreferenceHandle handle) const override {
        Entry& entry = entries_[handle];
        @autoreleasepool {
            id object = [defaults() objectForKey:keyOf(entry)];
            if (object == nil) {
                entry.read = {};
                return nullptr;
            }
            const auto stored = (__bridge CFTypeRef)object;
            if (stored != entry.read.get()) {
                entry.read = CfRef<CFTypeRef>::retaining(stored);
                entry.value = ofObject(object);
            }
        }
        return &entry.value;
    }

    void set(PreferenceHandle handle, PreferenceValue value) override {
        @autoreleasepool {
            const CfRef<CFTypeRef> object = std::visit(ToObject{}, value);
            if (!object) return;
            [defaults() setObject:(__bridge id)object.get() forKey:keyOf(entries_[handle])];
        }
    }

    void remove(PreferenceHandle handle) override {
        @autoreleasepool {
            [defaults() removeObjectForKey:keyOf(entries_[handle])];
        }
    }

private:
    struct Entry {
        CfRef<CFStringRef> key;
        CfRef<CFTypeRef> read;  ///< holding it keeps its address from being used again
        PreferenceValue value;
    };

    static NSUserDefaults* defaults() { return NSUserDefaults.standardUserDefaults; }
    static NSString* keyOf(const Entry& entry) { return (__bridge NSString*)entry.key.get(); }

    std::map<std::string, PreferenceHandle, std::less<>> handles_;
    mutable std::deque<Entry> entries_;
};

}  // namespace

std::unique_ptr<PreferenceStore> makePreferenceStore() {
    return std::make_unique<MacPreferenceStore>();
}

}  // namespace orvel::macos
