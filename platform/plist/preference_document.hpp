#pragma once

#include "platform/base/result.hpp"
#include "platform/preference_list.hpp"

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace orvel::plist {

using PreferenceValues = std::map<std::string, PreferenceValue, std::less<>>;

/// A file of settings: its bytes and what they say. Immutable.
class PreferenceDocument {
public:
    /// The document of an absent file.
    PreferenceDocument() = default;
    /// Fails when the bytes are no property list with a dictionary as root.
    static Result<PreferenceDocument> parse(std::string bytes);

    [[nodiscard]] const std::string& bytes() const { return bytes_; }
    [[nodiscard]] const PreferenceValues& values() const { return values_; }

    /// This document after the changes, as XML. Keys that are not named keep their place and every
    /// byte of their value, and so do comments. Without a difference the bytes stay as they are.
    [[nodiscard]] Result<PreferenceDocument> with(const PreferenceChanges& changes) const;

private:
    std::string bytes_;
    PreferenceValues values_;
};

}  // namespace orvel::plist
