#include "app/replay/json_field.hpp"

#include <algorithm>
#include <cassert>
#include <cmath>

namespace orvel::replay {

namespace {

/// Names of the input may hold anything; an error is one readable line.
std::string inPath(std::string_view name) {
    constexpr std::string_view plain =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-.";
    const bool isPlain = !name.empty() && name.find_first_not_of(plain) == name.npos;
    return isPlain ? std::string(name) : inQuotes(name);
}

}  // namespace

JsonField JsonField::member(std::string_view name, const Json& json) const {
    JsonField field(json, name, problem_);
    field.parent_ = this;
    return field;
}

JsonField JsonField::element(std::size_t index) const {
    JsonField field((*json_.asArray())[index], {}, problem_);
    field.parent_ = this;
    field.index_ = index;
    return field;
}

void JsonField::fail(std::string_view what) const {
    if (!hasFailed()) problem_ = path() + ": " + std::string(what);
}

std::string JsonField::path() const {
    if (parent_ == nullptr) return inPath(name_);
    if (index_ != kNoIndex) return parent_->path() + "[" + std::to_string(index_) + "]";
    return parent_->path() + "." + inPath(name_);
}

std::string inQuotes(std::string_view text) {
    JsonWriter writer;
    return writer.value(text).text();
}

void read(const JsonField& field, bool& into) {
    const bool* flag = field.json().asBool();
    if (flag == nullptr) return field.fail("must be true or false");
    into = *flag;
}

void read(const JsonField& field, double& into) {
    if (!field.json().isNumber()) return field.fail("must be a number");
    into = field.json().number();
}

void read(const JsonField& field, std::string& into) {
    const std::string* text = field.json().asString();
    if (text == nullptr) return field.fail("must be a text");
    into = *text;
}

void readInteger(const JsonField& field, std::int64_t least, std::int64_t most,
                 std::int64_t& into) {
    constexpr double limit = 9223372036854775808.0;
    const Json& json = field.json();
    if (!json.isNumber() || std::trunc(json.number()) != json.number()) {
        return field.fail("must be a whole number");
    }
    const bool fits = json.asInteger() != nullptr || std::abs(json.number()) < limit;
    const std::int64_t number = json.asInteger() != nullptr ? *json.asInteger()
                                : fits ? static_cast<std::int64_t>(json.number())
                                       : 0;
    if (!fits || number < least || number > most) return field.fail("is out of range");
    into = number;
}

void readNumbers(const JsonField& field, std::span<double> into) {
    const JsonArray* array = field.json().asArray();
    const bool isRight = array != nullptr && array->size() == into.size() &&
                         std::all_of(array->begin(), array->end(),
                                     [](const Json& element) { return element.isNumber(); });
    if (!isRight) {
        return field.fail("must be a list of " + std::to_string(into.size()) + " numbers");
    }
    std::transform(array->begin(), array->end(), into.begin(),
                   [](const Json& element) { return element.number(); });
}

std::size_t readLength(const JsonField& field) {
    const JsonArray* array = field.json().asArray();
    if (array != nullptr) return array->size();
    field.fail("must be a list");
    return 0;
}

void readName(const JsonField& field, std::span<const std::string_view> names, std::size_t& into) {
    const std::string* name = field.json().asString();
    if (name == nullptr) return field.fail("must be a text");
    const auto found = std::find(names.begin(), names.end(), *name);
    if (found != names.end()) {
        into = static_cast<std::size_t>(found - names.begin());
        return;
    }
    std::string known;
    for (const std::string_view candidate : names) {
        known += (known.empty() ? "" : ", ") + std::string(candidate);
    }
    field.fail(inQuotes(*name) + " is none of " + known);
}

ObjectReader::ObjectReader(const JsonField& field)
    : field_(field), object_(field.json().asObject()) {
    if (object_ == nullptr) field_.fail("must be an object");
}

const Json* ObjectReader::take(std::string_view name) {
    assert(knownCount_ < known_.size());
    known_[knownCount_++] = name;
    const Json* json = field_.json().member(name);
    if (json != nullptr) ++takenCount_;
    return json;
}

void ObjectReader::finish() const {
    if (object_ == nullptr || takenCount_ == object_->size()) return;
    for (const auto& [name, json] : *object_) {
        if (!isKnown(name)) return field_.fail("unknown key " + inQuotes(name));
        if (field_.json().member(name) != &json) return field_.fail(name + " stands twice");
    }
}

bool ObjectReader::isKnown(std::string_view name) const {
    const auto end = known_.begin() + static_cast<std::ptrdiff_t>(knownCount_);
    return std::find(known_.begin(), end, name) != end;
}

}  // namespace orvel::replay
