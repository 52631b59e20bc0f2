#include "platform/preference_store.hpp"

#include "platform/macos/mac_cf_ref.hpp"
#include "platform/macos/mac_factories.hpp"
#include "platform/macos/mac_preference_values.hpp"
#include "platform/macos/mac_text.hpp"
#include "platform/macos/mac_user_defaults.hpp"

#import <Foundation/Foundation.h>

#include <deque>
#include <map>

namespace orvel::macos {

namespace {

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
                entry.value = preferenceOf(stored);
            }
        }
        return &entry.value;
    }

    void set(PreferenceHandle handle, PreferenceValue value) override {
        @autoreleasepool {
            const CfRef<CFTypeRef> object = objectOf(value);
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

    static NSUserDefaults* defaults() { return (__bridge NSUserDefaults*)userDefaults(); }
    static NSString* keyOf(const Entry& entry) { return (__bridge NSString*)entry.key.get(); }

    std::map<std::string, PreferenceHandle, std::less<>> handles_;
    mutable std::deque<Entry> entries_;
};

}  // namespace

std::unique_ptr<PreferenceStore> makePreferenceStore() {
    return std::make_unique<MacPreferenceStore>();
}

}  // namespace orvel::macos
