#include "app/preferences.hpp"

#include <algorithm>
#include <cstdio>
#include <string_view>
#include <utility>

namespace orvel {

namespace {

/// A text is true when, after blanks, a sign and zeros, it goes on with Y, T or a digit.
bool textIsTrue(std::string_view text) {
    constexpr std::string_view blanks = " \t\n\v\f\r";
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    if (text.starts_with('+') || text.starts_with('-')) text.remove_prefix(1);
    text.remove_prefix(std::min(text.find_first_not_of('0'), text.size()));
    return !text.empty() &&
           std::string_view("YyTt123456789").find(text.front()) != std::string_view::npos;
}

bool isTrue(const PreferenceValue& value) {
    if (const bool* flag = std::get_if<bool>(&value)) return *flag;
    if (const auto* integer = std::get_if<std::int64_t>(&value)) return *integer != 0;
    if (const auto* real = std::get_if<double>(&value)) return *real != 0;
    if (const auto* text = std::get_if<std::string>(&value)) return textIsTrue(*text);
    return false;
}

std::string decimalText(double real) {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%.16g", real);
    return buffer;
}

std::optional<std::string> asText(const PreferenceValue& value) {
    if (const auto* text = std::get_if<std::string>(&value)) return *text;
    if (const bool* flag = std::get_if<bool>(&value)) return *flag ? "1" : "0";
    if (const auto* integer = std::get_if<std::int64_t>(&value)) return std::to_string(*integer);
    if (const auto* real = std::get_if<double>(&value)) return decimalText(*real);
    return std::nullopt;
}

template <typename T>
std::optional<T> copyOf(const PreferenceValue* value) {
    const T* content = value == nullptr ? nullptr : std::get_if<T>(value);
    return content == nullptr ? std::nullopt : std::optional<T>(*content);
}

}  // namespace

Preferences::Preferences(PreferenceStore& store) : store_(store) {
    for (const PreferenceInfo& info : kPreferenceTable) {
        handles_[static_cast<std::size_t>(info.key)] = store_.handle(info.name);
    }
}

bool Preferences::boolForKey(PreferenceKey key) const {
    const PreferenceValue* stored = value(key);
    return stored != nullptr && isTrue(*stored);
}

bool Preferences::shownFlag(PreferenceKey key) const {
    const PreferenceValue* stored = value(key);
    return stored == nullptr ? preferenceInfo(key).defaultFlag : isTrue(*stored);
}

std::optional<std::string> Preferences::stringForKey(PreferenceKey key) const {
    const PreferenceValue* stored = value(key);
    return stored == nullptr ? std::nullopt : asText(*stored);
}

std::string Preferences::shownText(PreferenceKey key) const {
    return stringForKey(key).value_or(std::string(preferenceInfo(key).defaultText));
}

std::optional<StringList> Preferences::stringArrayForKey(PreferenceKey key) const {
    return copyOf<StringList>(value(key));
}

std::optional<PreferenceData> Preferences::dataForKey(PreferenceKey key) const {
    return copyOf<PreferenceData>(value(key));
}

void Preferences::setBool(PreferenceKey key, bool value) { set(key, value); }

void Preferences::setInteger(PreferenceKey key, std::int64_t value) { set(key, value); }

void Preferences::setString(PreferenceKey key, std::string value) { set(key, std::move(value)); }

void Preferences::setStringArray(PreferenceKey key, StringList value) {
    set(key, std::move(value));
}

void Preferences::setData(PreferenceKey key, PreferenceData value) { set(key, std::move(value)); }

const PreferenceValue* Preferences::value(PreferenceKey key) const {
    return store_.value(handles_[static_cast<std::size_t>(key)]);
}

void Preferences::set(PreferenceKey key, PreferenceValue value) {
    store_.set(handles_[static_cast<std::size_t>(key)], std::move(value));
}

}  // namespace orvel
