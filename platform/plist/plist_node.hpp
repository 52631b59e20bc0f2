#pragma once

#include "platform/base/json.hpp"
#include "platform/base/result.hpp"
#include "platform/preference_store.hpp"

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace orvel::plist {

struct FreeNode {
    void operator()(void* node) const;
};

/// A value of libplist with everything below it.
using PlistNode = std::unique_ptr<void, FreeNode>;

/// Larger property lists are refused, so that a stray file cannot exhaust memory.
inline constexpr std::size_t kMaxPlistSize = std::size_t{64} << 20;

/// Parses a property list, XML or binary, of any root.
Result<PlistNode> parsePlist(std::string_view bytes);

/// A stored value; `ForeignPreference` for what has no counterpart.
PreferenceValue nodeValue(void* node);
/// The value with texts made fit for XML: what XML cannot hold becomes U+FFFD.
PreferenceValue storable(PreferenceValue value);
/// The node of a value that is `storable` and not foreign.
PlistNode valueNode(const PreferenceValue& value);

/// Data becomes base64 text, a date its seconds since 2001-01-01T00:00:00Z.
Json nodeJson(void* node);

/// Calls `visit` with each key of a dictionary and its value, in order.
void forEachItem(void* dictionary, const std::function<void(std::string key, void* node)>& visit);

/// The text of a whole XML property list.
std::string nodeXml(void* node);

}  // namespace orvel::plist
