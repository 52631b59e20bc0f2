#include "app/replay/world_reader.hpp"
#include "platform/base/base64.hpp"

namespace orvel::replay {

namespace {

using StoredValue = std::optional<PreferenceValue>;

void readData(const JsonField& field, StoredValue& into) {
    std::string text;
    ObjectReader object(field);
    object.required("data", text);
    object.finish();
    auto bytes = base64Decode(text);
    if (!bytes) return field.fail("data is not base64");
    into = std::move(*bytes);
}

void readStoredValue(const JsonField& field, StoredValue& into) {
    const Json& json = field.json();
    if (json.isNull()) {
        into.reset();
    } else if (const bool* flag = json.asBool()) {
        into = *flag;
    } else if (json.isNumber()) {
        std::int64_t number = 0;
        read(field, number);
        into = number;
    } else if (const std::string* text = json.asString()) {
        into = *text;
    } else if (json.asArray() != nullptr) {
        StringList texts;
        read(field, texts);
        into = std::move(texts);
    } else {
        readData(field, into);
    }
}

}  // namespace

void applyPreferences(const JsonField& field, memory::MemoryDesktop& desktop) {
    const JsonObject* object = field.json().asObject();
    if (object == nullptr) return field.fail("must be an object");
    std::vector<std::pair<std::string_view, StoredValue>> writes;
    for (const auto& [key, json] : *object) {
        writes.emplace_back(key, std::nullopt);
        readStoredValue(field.member(key, json), writes.back().second);
    }
    if (field.hasFailed()) return;
    for (auto& [key, value] : writes) {
        desktop.preferenceStore.writeFromOutside(key, std::move(value));
    }
}

}  // namespace orvel::replay
