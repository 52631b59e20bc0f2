#include "platform/base/json.hpp"

#include "platform/base/utf8.hpp"

#include <charconv>
#include <cmath>
#include <locale>
#include <sstream>

#define RAPIDJSON_HAS_STDSTRING 1
#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

namespace orvel {

namespace {

/// Whether `text` as a whole is a number that fits `number`.
template <typename Number>
bool reads(std::string_view text, Number& number) {
    const char* const begin = text.data();
    const char* const end = begin + text.size();
    const auto outcome = std::from_chars(begin, end, number);
    return outcome.ec == std::errc{} && outcome.ptr == end;
}

/// The number by the standard streams, which every library has. Out of a double's range it is
/// about zero or a very large one.
double streamedDouble(std::string_view text, bool& isExact) {
    std::istringstream stream{std::string(text)};
    stream.imbue(std::locale::classic());
    double number = 0;
    isExact = static_cast<bool>(stream >> number);
    return number;
}

bool readsDouble(std::string_view text, double& number) {
#ifdef __cpp_lib_to_chars
    return reads(text, number);
#else  // This library's from_chars knows integers only.
    bool isExact = false;
    number = streamedDouble(text, isExact);
    return isExact;
#endif
}

/// Whether a number out of a double's range is too close to zero rather than too far from it.
bool isTiny(std::string_view text) {
    bool isExact = false;
    return std::abs(streamedDouble(text, isExact)) < 1;
}

/// Builds `Json` values from the reader's events. It reads numbers itself: the reader's own
/// conversion of a long zero (0.000…) is undefined behaviour.
class Builder : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Builder> {
public:
    bool Null() { return add(nullptr); }
    bool Bool(bool flag) { return add(flag); }
    bool RawNumber(const char* text, rapidjson::SizeType length, bool) {
        if (std::int64_t integer = 0; reads({text, length}, integer)) return add(integer);
        if (double number = 0; readsDouble({text, length}, number)) return add(number);
        if (isTiny({text, length})) return add(0.0);
        refusal_ = "Number too big to be stored in double.";
        return false;
    }
    bool String(const char* text, rapidjson::SizeType length, bool) {
        return add(std::string(text, length));
    }
    bool Key(const char* text, rapidjson::SizeType length, bool) {
        open_.back().name.assign(text, length);
        return true;
    }
    bool StartObject() { return begin(JsonObject{}); }
    bool EndObject(rapidjson::SizeType) { return end(); }
    bool StartArray() { return begin(JsonArray{}); }
    bool EndArray(rapidjson::SizeType) { return end(); }

    Json take() { return std::move(root_); }
    /// Why the last value was refused.
    [[nodiscard]] std::string_view refusal() const { return refusal_; }

private:
    struct Open {
        Json container;
        std::string name;
    };

    /// Values are taken down recursively: deeper ones would use up the stack.
    static constexpr std::size_t kMostLevels = 500;

    bool begin(Json::Value container) {
        if (open_.size() == kMostLevels) {
            refusal_ = "Values are nested too deeply.";
            return false;
        }
        open_.push_back({Json(std::move(container)), {}});
        return true;
    }
    bool end() {
        Json done = std::move(open_.back().container);
        open_.pop_back();
        return add(std::move(done.value()));
    }
    bool add(Json::Value value) {
        if (open_.empty()) {
            root_ = Json(std::move(value));
            return true;
        }
        Open& top = open_.back();
        if (auto* array = std::get_if<JsonArray>(&top.container.value())) {
            array->emplace_back(std::move(value));
        } else if (auto* object = std::get_if<JsonObject>(&top.container.value())) {
            object->emplace_back(std::move(top.name), Json(std::move(value)));
        }
        return true;
    }

    Json root_;
    std::vector<Open> open_;
    std::string_view refusal_;
};

void appendControl(std::string& out, unsigned char control) {
    static constexpr std::string_view hex = "0123456789abcdef";
    out += "\\u00";
    out += hex[control >> 4U];
    out += hex[control & 0xFU];
}

void appendEscaped(std::string& out, char c) {
    switch (c) {
        case '"': out += "\\\""; return;
        case '\\': out += "\\\\"; return;
        case '\n': out += "\\n"; return;
        case '\r': out += "\\r"; return;
        case '\t': out += "\\t"; return;
        default: break;
    }
    if (static_cast<unsigned char>(c) < 0x20)
        return appendControl(out, static_cast<unsigned char>(c));
    out += c;
}

void appendQuoted(std::string& out, std::string_view text) {
    out += '"';
    while (!text.empty()) {
        const std::size_t length = utf8Length(text);
        if (length == 1) {
            appendEscaped(out, text.front());
        } else if (length == 0) {
            out += "\xEF\xBF\xBD";
        } else {
            out += text.substr(0, length);
        }
        text.remove_prefix(length == 0 ? 1 : length);
    }
    out += '"';
}

std::string_view wordsFor(rapidjson::ParseErrorCode code, const Builder& builder) {
    if (code == rapidjson::kParseErrorTermination) return builder.refusal();
    return rapidjson::GetParseError_En(code);
}

template <typename Number>
void appendNumber(std::string& out, Number number) {
    char buffer[32];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, number).ptr;
    out.append(buffer, end);
}

}  // namespace

double Json::number() const {
    if (const auto* integer = std::get_if<std::int64_t>(&value_))
        return static_cast<double>(*integer);
    return std::get<double>(value_);
}

const Json* Json::member(std::string_view name) const {
    const JsonObject* object = asObject();
    if (object == nullptr) return nullptr;
    for (const auto& [memberName, json] : *object) {
        if (memberName == name) return &json;
    }
    return nullptr;
}

Result<Json> parseJson(std::string_view text) {
    // The reader takes a zero byte for the end of the text.
    if (const std::size_t zero = text.find('\0'); zero != text.npos) {
        return Failure{"Zero byte in the text. (byte " + std::to_string(zero) + ")"};
    }
    Builder builder;
    rapidjson::MemoryStream stream(text.data(), text.size());
    rapidjson::EncodedInputStream<rapidjson::UTF8<>, rapidjson::MemoryStream> input(stream);
    rapidjson::Reader reader;
    constexpr unsigned flags = rapidjson::kParseValidateEncodingFlag |
                               rapidjson::kParseNumbersAsStringsFlag |
                               rapidjson::kParseIterativeFlag;
    const auto outcome = reader.Parse<flags>(input, builder);
    if (outcome.IsError()) {
        return Failure{std::string(wordsFor(outcome.Code(), builder)) + " (byte " +
                       std::to_string(outcome.Offset()) + ")"};
    }
    return builder.take();
}

void JsonWriter::separate() {
    if (needsComma_) text_ += ',';
    needsComma_ = true;
}

JsonWriter& JsonWriter::beginObject() {
    separate();
    text_ += '{';
    needsComma_ = false;
    return *this;
}

JsonWriter& JsonWriter::endObject() {
    text_ += '}';
    needsComma_ = true;
    return *this;
}

JsonWriter& JsonWriter::beginArray() {
    separate();
    text_ += '[';
    needsComma_ = false;
    return *this;
}

JsonWriter& JsonWriter::endArray() {
    text_ += ']';
    needsComma_ = true;
    return *this;
}

JsonWriter& JsonWriter::key(std::string_view name) {
    separate();
    appendQuoted(text_, name);
    text_ += ':';
    needsComma_ = false;
    return *this;
}

JsonWriter& JsonWriter::value(std::string_view text) {
    separate();
    appendQuoted(text_, text);
    return *this;
}

JsonWriter& JsonWriter::value(bool flag) { return raw(flag ? "true" : "false"); }

JsonWriter& JsonWriter::value(std::int64_t number) {
    separate();
    appendNumber(text_, number);
    return *this;
}

JsonWriter& JsonWriter::value(std::uint64_t number) {
    separate();
    appendNumber(text_, number);
    return *this;
}

JsonWriter& JsonWriter::value(double number) {
    constexpr double exactLimit = 9007199254740992.0;
    if (std::trunc(number) == number && std::abs(number) < exactLimit) {
        return value(static_cast<std::int64_t>(number));
    }
    if (!std::isfinite(number)) return null();
    separate();
    appendNumber(text_, number);
    return *this;
}

JsonWriter& JsonWriter::null() { return raw("null"); }

JsonWriter& JsonWriter::raw(std::string_view json) {
    separate();
    text_ += json;
    return *this;
}

JsonWriter& JsonWriter::value(const Json& json) {
    if (json.isNull()) return null();
    if (const bool* flag = json.asBool()) return value(*flag);
    if (const std::int64_t* integer = json.asInteger()) return value(*integer);
    if (const std::string* text = json.asString()) return value(*text);
    if (const JsonArray* array = json.asArray()) {
        beginArray();
        for (const Json& element : *array) value(element);
        return endArray();
    }
    if (const JsonObject* object = json.asObject()) {
        beginObject();
        for (const auto& [name, content] : *object) member(name, content);
        return endObject();
    }
    return value(json.number());
}

void JsonWriter::clear() {
    text_.clear();
    needsComma_ = false;
}

}  // namespace orvel
