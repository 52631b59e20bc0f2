#include "platform/memory/memory_preference_store.hpp"

#include "platform/base/base64.hpp"

namespace orvel::memory {

namespace {

struct ValueWriter {
    JsonWriter& out;

    void operator()(bool flag) const { out.value(flag); }
    void operator()(std::int64_t number) const { out.value(number); }
    void operator()(double number) const { out.value(number); }
    void operator()(const std::string& text) const { out.value(text); }
    void operator()(const StringList& texts) const {
        out.beginArray();
        for (const std::string& text : texts) out.value(text);
        out.endArray();
    }
    void operator()(const PreferenceData& data) const {
        out.beginObject().member("data", base64Encode(data)).endObject();
    }
    void operator()(ForeignPreference) const { out.null(); }
};

}  // namespace

void writePreferenceValue(JsonWriter& out, const PreferenceValue& value) {
    std::visit(ValueWriter{out}, value);
}

PreferenceHandle MemoryPreferenceStore::handle(std::string_view key) {
    if (const auto known = handles_.find(key); known != handles_.end()) return known->second;
    const auto handle = static_cast<PreferenceHandle>(entries_.size());
    entries_.push_back({std::string(key), std::nullopt});
    handles_.emplace(key, handle);
    return handle;
}

const PreferenceValue* MemoryPreferenceStore::value(PreferenceHandle handle) const {
    const auto& stored = entries_[handle].value;
    return stored ? &*stored : nullptr;
}

void MemoryPreferenceStore::set(PreferenceHandle handle, PreferenceValue value) {
    Entry& entry = entries_[handle];
    auto effect = effects_.effect("prefWrite");
    effect->beginObject().member("key", entry.key).key("value");
    writePreferenceValue(*effect, value);
    effect->endObject();
    entry.value = std::move(value);
}

void MemoryPreferenceStore::remove(PreferenceHandle handle) {
    Entry& entry = entries_[handle];
    effects_.effect("prefWrite")
        ->beginObject()
        .member("key", entry.key)
        .key("value")
        .null()
        .endObject();
    entry.value.reset();
}

void MemoryPreferenceStore::writeFromOutside(std::string_view key,
                                             std::optional<PreferenceValue> value) {
    entries_[handle(key)].value = std::move(value);
}

void MemoryPreferenceStore::writeAll(JsonWriter& out) const {
    out.beginObject();
    for (const auto& [key, handle] : handles_) {
        const PreferenceValue* stored = value(handle);
        if (stored == nullptr) continue;
        out.key(key);
        writePreferenceValue(out, *stored);
    }
    out.endObject();
}

}  // namespace orvel::memory
