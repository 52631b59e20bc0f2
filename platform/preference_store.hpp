#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace orvel {

using PreferenceData = std::vector<std::byte>;
using StringList = std::vector<std::string>;
/// A stored value of a kind that this system never writes (date, dictionary, mixed list).
struct ForeignPreference {
    bool operator==(const ForeignPreference&) const = default;
};

using PreferenceValue = std::variant<bool, std::int64_t, double, std::string, StringList,
                                     PreferenceData, ForeignPreference>;

/// Stands for one key; the same key always gives the same handle.
using PreferenceHandle = std::uint32_t;

/// The user's stored settings: flat keys and values, nothing registered as default. Main thread.
class PreferenceStore {
public:
    virtual ~PreferenceStore() = default;

    /// Resolves a key once, so that reads cost no look-up.
    [[nodiscard]] virtual PreferenceHandle handle(std::string_view key) = 0;
    /// The value as stored at this moment, also by another process; null when absent. Valid until
    /// the next call of any method.
    [[nodiscard]] virtual const PreferenceValue* value(PreferenceHandle handle) const = 0;
    /// Stores at once.
    virtual void set(PreferenceHandle handle, PreferenceValue value) = 0;
    virtual void remove(PreferenceHandle handle) = 0;
};

}  // namespace orvel
