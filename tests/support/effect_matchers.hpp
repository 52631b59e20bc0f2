#pragma once

#include "platform/base/json.hpp"

#include <gmock/gmock.h>

#include <string>
#include <string_view>

namespace orvel::test {

// The effects that tests expect most, in the form that MemoryFixture::effects() gives:
//     EXPECT_THAT(effects(), ElementsAre(logged("…"), modified(31, flag::command)));

inline std::string effectLine(std::string_view name, std::string_view json) {
    JsonWriter writer;
    return writer.beginObject().key(name).raw(json).endObject().text();
}

inline std::string logged(std::string_view text) {
    JsonWriter writer;
    return writer.beginObject().member("log", text).endObject().text();
}

inline std::string passed() { return R"({"decision":"pass"})"; }
inline std::string swallowed() { return R"({"decision":"swallow"})"; }
inline std::string untapped() { return R"({"decision":"untapped"})"; }

inline std::string modified(std::int64_t key, std::uint64_t flags) {
    JsonWriter writer;
    writer.beginObject().member("decision", "modify").member("key", key).member("flags", flags);
    return writer.endObject().text();
}

inline std::string scrolled(std::int64_t lines, std::int64_t pixels) {
    JsonWriter writer;
    writer.beginObject().member("decision", "modify").member("deltaAxis1", lines);
    return writer.member("pointDeltaAxis1", pixels).endObject().text();
}

/// A key event that was posted with our marker.
inline std::string posted(std::string_view type, std::int64_t key, std::uint64_t flags) {
    JsonWriter writer;
    writer.beginObject().key("post").beginObject().member("type", type).member("key", key);
    writer.member("flags", flags).member("userData", 42).member("tap", "hid");
    return writer.endObject().endObject().text();
}

inline std::string ranScript(std::string_view source) {
    JsonWriter writer;
    writer.beginObject().key("script").beginObject().member("runner", "NSAppleScript");
    return writer.member("source", source).endObject().endObject().text();
}

/// The same effect, made by a background job.
inline std::string inBackground(std::string effect) {
    effect.insert(effect.size() - 1, R"(,"queue":"background")");
    return effect;
}

}  // namespace orvel::test
