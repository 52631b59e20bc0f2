#pragma once

#include "platform/base/result.hpp"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace orvel {

class Json;

using JsonArray = std::vector<Json>;
/// Members in the order of the text; a name may stand more than once.
using JsonObject = std::vector<std::pair<std::string, Json>>;

/// One JSON value. Integers that fit 64 bits stay exact.
class Json {
public:
    using Value = std::variant<std::nullptr_t, bool, std::int64_t, double, std::string, JsonArray,
                               JsonObject>;

    Json() = default;
    Json(Value value) : value_(std::move(value)) {}

    [[nodiscard]] bool isNull() const { return is<std::nullptr_t>(); }
    [[nodiscard]] const bool* asBool() const { return std::get_if<bool>(&value_); }
    [[nodiscard]] const std::int64_t* asInteger() const {
        return std::get_if<std::int64_t>(&value_);
    }
    [[nodiscard]] const std::string* asString() const { return std::get_if<std::string>(&value_); }
    [[nodiscard]] const JsonArray* asArray() const { return std::get_if<JsonArray>(&value_); }
    [[nodiscard]] const JsonObject* asObject() const { return std::get_if<JsonObject>(&value_); }
    [[nodiscard]] bool isNumber() const { return is<std::int64_t>() || is<double>(); }
    /// Any number as a double; only while `isNumber()`.
    [[nodiscard]] double number() const;
    /// The first member of that name, or null when this is no object or has none.
    [[nodiscard]] const Json* member(std::string_view name) const;

    Value& value() { return value_; }
    [[nodiscard]] const Value& value() const { return value_; }

private:
    template <typename T>
    [[nodiscard]] bool is() const {
        return std::holds_alternative<T>(value_);
    }
    Value value_ = nullptr;
};

/// Parses one JSON text (UTF-8, checked). The failure says what is wrong and at which byte.
Result<Json> parseJson(std::string_view text);

/// Writes JSON text without building values; members stay in the order of the calls. Numbers
/// without a fraction are written as integers. Invalid UTF-8 is written as U+FFFD.
class JsonWriter {
public:
    JsonWriter& beginObject();
    JsonWriter& endObject();
    JsonWriter& beginArray();
    JsonWriter& endArray();
    JsonWriter& key(std::string_view name);
    JsonWriter& value(std::string_view text);
    JsonWriter& value(const char* text) { return value(std::string_view(text)); }
    JsonWriter& value(const std::string& text) { return value(std::string_view(text)); }
    JsonWriter& value(bool flag);
    JsonWriter& value(std::int64_t number);
    JsonWriter& value(std::uint64_t number);
    JsonWriter& value(int number) { return value(static_cast<std::int64_t>(number)); }
    JsonWriter& value(double number);
    JsonWriter& null();
    /// Appends text that is already JSON as the next value.
    JsonWriter& raw(std::string_view json);
    JsonWriter& value(const Json& json);

    template <typename T>
    JsonWriter& member(std::string_view name, const T& content) {
        key(name);
        return value(content);
    }

    [[nodiscard]] const std::string& text() const { return text_; }
    void clear();

private:
    void separate();

    std::string text_;
    bool needsComma_ = false;
};

}  // namespace orvel
