#include "app/cli/preference_text.hpp"

#include "engine/remap_model.hpp"
#include "platform/base/base64.hpp"
#include "platform/base/json.hpp"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <numeric>
#include <utility>

namespace orvel {

namespace {

template <typename Table>
std::vector<std::string_view> labelsOf(const Table& table) {
    std::vector<std::string_view> labels;
    for (const auto& row : table) labels.push_back(row.label);
    return labels;
}

std::string joined(const std::vector<std::string_view>& texts) {
    std::string line;
    for (const std::string_view text : texts) line.append(line.empty() ? "" : ", ").append(text);
    return line;
}

struct TextWriter {
    std::string operator()(bool flag) const { return flag ? "true" : "false"; }
    std::string operator()(std::int64_t number) const { return std::to_string(number); }
    std::string operator()(double number) const {
        char buffer[32];
        std::snprintf(buffer, sizeof buffer, "%.17g", number);
        return buffer;
    }
    std::string operator()(const std::string& text) const { return text; }
    std::string operator()(const StringList& list) const {
        JsonWriter writer;
        writer.beginArray();
        for (const std::string& text : list) writer.value(text);
        return writer.endArray().text();
    }
    std::string operator()(const PreferenceData& data) const { return base64Encode(data); }
    std::string operator()(const ForeignPreference&) const { return "(of a type of its own)"; }
};

Failure notOfType(std::string_view text, std::string_view wanted) {
    return {"'" + std::string(text) + "' is no " + std::string(wanted)};
}

Result<PreferenceValue> parseFlag(const std::string& word) {
    for (const std::string_view yes : {"true", "yes", "on", "1"}) {
        if (word == yes) return PreferenceValue(true);
    }
    for (const std::string_view no : {"false", "no", "off", "0"}) {
        if (word == no) return PreferenceValue(false);
    }
    return notOfType(word, "boolean: true or false");
}

Result<PreferenceValue> parseInteger(const std::string& word) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    if (error == std::errc::result_out_of_range) return notOfType(word, "number of 64 bits");
    if (error != std::errc() || end != word.data() + word.size()) {
        return notOfType(word, "whole number");
    }
    return PreferenceValue(number);
}

Result<PreferenceValue> parseList(const std::vector<std::string>& words) {
    if (words.size() != 1 || !words.front().starts_with('[')) return PreferenceValue(words);
    const Result<Json> json = parseJson(words.front());
    const JsonArray* array = json ? json.value().asArray() : nullptr;
    if (array == nullptr) return notOfType(words.front(), "JSON array");
    StringList list;
    for (const Json& element : *array) {
        if (element.asString() == nullptr) return notOfType(words.front(), "JSON array of strings");
        list.push_back(*element.asString());
    }
    return PreferenceValue(std::move(list));
}

Result<PreferenceValue> parseWord(PreferenceType type, const std::string& word) {
    if (type == PreferenceType::boolean) return parseFlag(word);
    if (type == PreferenceType::integer) return parseInteger(word);
    if (type != PreferenceType::data) return PreferenceValue(word);
    auto data = base64Decode(word);
    if (!data) return notOfType(word, "base64 text");
    return PreferenceValue(std::move(*data));
}

char lowered(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

/// How many letters must be put in, taken out or changed to make `b` of `a`; case costs nothing.
std::size_t distance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i);
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t changed = diagonal + (lowered(a[i - 1]) == lowered(b[j - 1]) ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({changed, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row.back();
}

}  // namespace

std::vector<std::string_view> preferenceChoices(PreferenceKey key) {
    switch (key) {
        case PreferenceKey::mapCtrl:
        case PreferenceKey::mapOption:
        case PreferenceKey::mapCmd:
        case PreferenceKey::mapRightCmd:
        case PreferenceKey::mapRightOption: return labelsOf(kModifierTargets);
        case PreferenceKey::deleteStrategy: return labelsOf(kDeleteStrategies);
        case PreferenceKey::deleteComboMod: return labelsOf(kComboModifiers);
        case PreferenceKey::deleteSingleKey: return labelsOf(kSacrificeKeys);
        default: return {};
    }
}

std::string_view preferenceTypeName(PreferenceType type) {
    switch (type) {
        case PreferenceType::boolean: return "boolean";
        case PreferenceType::integer: return "integer";
        case PreferenceType::string: return "string";
        case PreferenceType::stringList: return "list of strings";
        case PreferenceType::data: return "data";
    }
    return "";
}

std::string preferenceText(const PreferenceValue& value) { return std::visit(TextWriter(), value); }

Result<PreferenceValue> parsePreference(const PreferenceInfo& info,
                                        const std::vector<std::string>& words) {
    if (words.empty()) return Failure{"a value is missing"};
    if (info.type == PreferenceType::stringList) return parseList(words);
    if (words.size() > 1)
        return Failure{"one value is wanted, here are " + std::to_string(words.size())};
    Result<PreferenceValue> value = parseWord(info.type, words.front());
    if (!value) return value;
    if (const Result<> checked = checkPreference(info, value.value()); !checked) {
        return Failure{checked.error()};
    }
    return value;
}

bool hasPreferenceType(PreferenceType type, const PreferenceValue& value) {
    switch (type) {
        case PreferenceType::boolean: return std::holds_alternative<bool>(value);
        case PreferenceType::integer: return std::holds_alternative<std::int64_t>(value);
        case PreferenceType::string: return std::holds_alternative<std::string>(value);
        case PreferenceType::stringList: return std::holds_alternative<StringList>(value);
        case PreferenceType::data: return std::holds_alternative<PreferenceData>(value);
    }
    return false;
}

Result<> checkPreference(const PreferenceInfo& info, const PreferenceValue& value) {
    if (!hasPreferenceType(info.type, value)) {
        return notOfType(preferenceText(value), preferenceTypeName(info.type));
    }
    const std::vector<std::string_view> choices = preferenceChoices(info.key);
    const auto* text = std::get_if<std::string>(&value);
    if (choices.empty() || text == nullptr) return {};
    if (std::find(choices.begin(), choices.end(), *text) != choices.end()) return {};
    return Failure{"'" + *text + "' is none of: " + joined(choices)};
}

std::string_view nearestPreference(std::string_view name) {
    const auto nearest =
        std::min_element(kPreferenceTable.begin(), kPreferenceTable.end(),
                         [&](const PreferenceInfo& a, const PreferenceInfo& b) {
                             return distance(name, a.name) < distance(name, b.name);
                         });
    return nearest->name;
}

}  // namespace orvel
