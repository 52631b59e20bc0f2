#pragma once

#include "app/preference_keys.hpp"
#include "platform/preference_store.hpp"

#include <array>
#include <optional>
#include <string>

namespace orvel {

/// Typed reads and writes of the stored settings. Caches nothing: every read asks the store at
/// the moment of use. Values of another type read as a macOS defaults domain reads them. Main
/// thread.
class Preferences {
public:
    explicit Preferences(PreferenceStore& store);

    /// False when absent.
    [[nodiscard]] bool boolForKey(PreferenceKey key) const;
    /// Like `boolForKey`, with the table's default when absent: what a view shows.
    [[nodiscard]] bool shownFlag(PreferenceKey key) const;
    [[nodiscard]] std::optional<std::string> stringForKey(PreferenceKey key) const;
    /// Like `stringForKey`, with the table's default when absent.
    [[nodiscard]] std::string shownText(PreferenceKey key) const;
    [[nodiscard]] std::optional<StringList> stringArrayForKey(PreferenceKey key) const;
    [[nodiscard]] std::optional<PreferenceData> dataForKey(PreferenceKey key) const;

    void setBool(PreferenceKey key, bool value);
    void setInteger(PreferenceKey key, std::int64_t value);
    void setString(PreferenceKey key, std::string value);
    void setStringArray(PreferenceKey key, StringList value);
    void setData(PreferenceKey key, PreferenceData value);

private:
    [[nodiscard]] const PreferenceValue* value(PreferenceKey key) const;
    void set(PreferenceKey key, PreferenceValue value);

    PreferenceStore& store_;
    std::array<PreferenceHandle, kPreferenceCount> handles_{};
};

}  // namespace orvel
