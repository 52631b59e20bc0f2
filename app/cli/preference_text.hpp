#pragma once

#include "app/preference_keys.hpp"
#include "platform/base/result.hpp"
#include "platform/preference_store.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace orvel {

/// The texts that a setting may have, in the order of its menu; empty when any text will do.
std::vector<std::string_view> preferenceChoices(PreferenceKey key);

/// "boolean", "integer", "string", "list of strings" or "data".
std::string_view preferenceTypeName(PreferenceType type);

/// A value on one line, as `parsePreference` takes it: a list as JSON, data as base64.
std::string preferenceText(const PreferenceValue& value);

/// The value that words of a command line stand for. A list is one JSON array, or its elements.
Result<PreferenceValue> parsePreference(const PreferenceInfo& info,
                                        const std::vector<std::string>& words);

bool hasPreferenceType(PreferenceType type, const PreferenceValue& value);

/// Whether a setting may have a value: its type, and its text where only some are known.
Result<> checkPreference(const PreferenceInfo& info, const PreferenceValue& value);

/// The name in the table that is most like `name`.
std::string_view nearestPreference(std::string_view name);

}  // namespace orvel
