#pragma once

#include "platform/base/result.hpp"
#include "platform/preference_store.hpp"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvel {

/// Settings outside of a store, in the order of their file.
using PreferenceEntries = std::vector<std::pair<std::string, PreferenceValue>>;

/// What is to become of some keys: a value, or nothing to remove the key.
using PreferenceChanges = std::map<std::string, std::optional<PreferenceValue>, std::less<>>;

/// Reads a property list, XML or binary, whose root is a dictionary.
Result<PreferenceEntries> readPreferenceList(std::string_view bytes);

/// The entries as an XML property list. Values of foreign types are left out.
std::string writePreferenceList(const PreferenceEntries& entries);

}  // namespace orvel
