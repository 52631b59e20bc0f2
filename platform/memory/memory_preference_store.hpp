#pragma once

#include "platform/memory/effect_log.hpp"
#include "platform/preference_store.hpp"

#include <deque>
#include <map>
#include <optional>

namespace orvel::memory {

class MemoryPreferenceStore final : public PreferenceStore {
public:
    explicit MemoryPreferenceStore(EffectLog& effects) : effects_(effects) {}

    [[nodiscard]] PreferenceHandle handle(std::string_view key) override;
    [[nodiscard]] const PreferenceValue* value(PreferenceHandle handle) const override;
    void set(PreferenceHandle handle, PreferenceValue value) override;
    void remove(PreferenceHandle handle) override;

    /// Another process stores a value, or removes it when absent: no effect of this system.
    void writeFromOutside(std::string_view key, std::optional<PreferenceValue> value);
    /// Writes every stored key with its value as one object, sorted by key.
    void writeAll(JsonWriter& out) const;

private:
    struct Entry {
        std::string key;
        std::optional<PreferenceValue> value;
    };

    EffectLog& effects_;
    std::deque<Entry> entries_;  ///< by handle
    std::map<std::string, PreferenceHandle, std::less<>> handles_;
};

/// Writes a stored value in the words of transcripts.
void writePreferenceValue(JsonWriter& out, const PreferenceValue& value);

}  // namespace orvel::memory
