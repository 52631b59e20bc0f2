#include "platform/plist/plist_node.hpp"
#include "platform/plist/preference_document.hpp"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <utility>

// Any bytes are a property list or are refused. What is accepted can be changed, and then every
// other value is still what it was; only some binary lists hold what XML cannot.

namespace {

using orvel::PreferenceValue;
using orvel::plist::PreferenceDocument;
using orvel::plist::PreferenceValues;

/// A number that equals nothing, itself included, would look like a change.
bool hasNaN(const PreferenceValues& values) {
    for (const auto& [key, value] : values) {
        const auto* real = std::get_if<double>(&value);
        if (real != nullptr && std::isnan(*real)) return true;
    }
    return false;
}

void require(bool holds) {
    if (!holds) std::abort();
}

void changeAndRestore(const PreferenceDocument& document) {
    constexpr const char* key = "orvel fuzz <&>";
    if (document.values().contains(key)) return;
    const auto added = document.with({{key, PreferenceValue("a & b")}});
    require(added.ok());
    PreferenceValues wanted = document.values();
    wanted.emplace(key, "a & b");
    require(added.value().values() == wanted);
    const auto removed = added.value().with({{key, std::nullopt}});
    require(removed.ok() && removed.value().values() == document.values());
}

void changeEachKey(const PreferenceDocument& document) {
    for (const auto& [key, value] : document.values()) {
        const auto changed = document.with({{key, PreferenceValue(orvel::StringList{"x"})}});
        require(changed.ok());
        PreferenceValues wanted = document.values();
        wanted.insert_or_assign(key, orvel::StringList{"x"});
        require(changed.value().values() == wanted);
        const auto removed = document.with({{key, std::nullopt}});
        wanted.erase(key);
        require(removed.ok() && removed.value().values() == wanted);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string bytes(reinterpret_cast<const char*>(data), size);
    if (const auto node = orvel::plist::parsePlist(bytes)) {
        static_cast<void>(orvel::plist::nodeJson(node.value().get()));
    }
    const bool isBinary = bytes.starts_with("bplist");
    const auto document = PreferenceDocument::parse(std::move(bytes));
    if (!document || hasNaN(document.value().values())) return 0;
    if (isBinary && !document.value().with({{"key", PreferenceValue(true)}})) return 0;
    changeAndRestore(document.value());
    changeEachKey(document.value());
    return 0;
}
