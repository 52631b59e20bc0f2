#pragma once

#include "platform/base/geometry.hpp"
#include "platform/base/json.hpp"

#include <array>
#include <concepts>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvel::replay {

/// What is wrong with a step; empty while nothing is.
using Problem = std::string;

/// One value of a step with the place where it stands, for readers that report what is wrong.
/// `name`, `parent` and `problem` outlive it.
class JsonField {
public:
    JsonField(const Json& json, std::string_view name, Problem& problem)
        : json_(json), name_(name), problem_(problem) {}

    [[nodiscard]] const Json& json() const { return json_; }
    [[nodiscard]] JsonField member(std::string_view name, const Json& json) const;
    [[nodiscard]] JsonField element(std::size_t index) const;

    /// Reports what is wrong here; the first report of a step stays.
    void fail(std::string_view what) const;
    [[nodiscard]] bool hasFailed() const { return !problem_.empty(); }

private:
    static constexpr std::size_t kNoIndex = std::numeric_limits<std::size_t>::max();

    [[nodiscard]] std::string path() const;

    const Json& json_;
    std::string_view name_;
    Problem& problem_;
    const JsonField* parent_ = nullptr;
    std::size_t index_ = kNoIndex;
};

/// A text of the input as it may stand in an error line: quoted and escaped.
std::string inQuotes(std::string_view text);

// One `read` for every type that stands in a step. Each reports through the field when the value
// is of another type, and leaves `into` alone then.

void read(const JsonField& field, bool& into);
void read(const JsonField& field, double& into);
void read(const JsonField& field, std::string& into);
/// `least` and `most` are the ends of what is accepted.
void readInteger(const JsonField& field, std::int64_t least, std::int64_t most, std::int64_t& into);
/// An array of exactly as many numbers as `into` has.
void readNumbers(const JsonField& field, std::span<double> into);
/// Fails unless the value is an array, and gives its length.
std::size_t readLength(const JsonField& field);
/// One of `names`; gives its place among them.
void readName(const JsonField& field, std::span<const std::string_view> names, std::size_t& into);

template <std::integral Integer>
void read(const JsonField& field, Integer& into) {
    constexpr auto most = std::numeric_limits<std::int64_t>::max();
    std::int64_t number = 0;
    if constexpr (std::in_range<std::int64_t>(std::numeric_limits<Integer>::max())) {
        readInteger(field, std::numeric_limits<Integer>::min(), std::numeric_limits<Integer>::max(),
                    number);
    } else {
        readInteger(field, 0, most, number);
    }
    if (!field.hasFailed()) into = static_cast<Integer>(number);
}

template <CoordinateSpace space>
void read(const JsonField& field, RectIn<space>& into) {
    std::array<double, 4> numbers{};
    readNumbers(field, numbers);
    if (!field.hasFailed()) into = {numbers[0], numbers[1], numbers[2], numbers[3]};
}

template <CoordinateSpace space>
void read(const JsonField& field, PointIn<space>& into) {
    std::array<double, 2> numbers{};
    readNumbers(field, numbers);
    if (!field.hasFailed()) into = {numbers[0], numbers[1]};
}

inline void read(const JsonField& field, Size& into) {
    std::array<double, 2> numbers{};
    readNumbers(field, numbers);
    if (!field.hasFailed()) into = {numbers[0], numbers[1]};
}

/// Null stands for an absent value.
template <typename Value>
void read(const JsonField& field, std::optional<Value>& into) {
    into.reset();
    if (!field.json().isNull()) read(field, into.emplace());
}

template <typename Value>
void read(const JsonField& field, std::vector<Value>& into) {
    const std::size_t length = readLength(field);
    into.assign(length, Value{});
    for (std::size_t i = 0; i < length; ++i) read(field.element(i), into[i]);
}

/// Reads the members of one object and reports those that nobody asked for.
class ObjectReader {
public:
    explicit ObjectReader(const JsonField& field);

    /// Leaves `into` alone when the member is absent; true when it is there.
    template <typename Value>
    bool optional(std::string_view name, Value& into) {
        const Json* json = take(name);
        if (json != nullptr) read(field_.member(name, *json), into);
        return json != nullptr;
    }
    template <typename Value>
    void required(std::string_view name, Value& into) {
        if (!optional(name, into)) field_.fail(std::string(name) + " is missing");
    }
    /// One of `names`, which stand for the values 0, 1, … of an enumeration.
    template <typename Enumeration>
    bool optionalName(std::string_view name, std::span<const std::string_view> names,
                      Enumeration& into) {
        const Json* json = take(name);
        if (json == nullptr) return false;
        auto place = static_cast<std::size_t>(into);
        readName(field_.member(name, *json), names, place);
        into = static_cast<Enumeration>(place);
        return true;
    }
    template <typename Enumeration>
    void requiredName(std::string_view name, std::span<const std::string_view> names,
                      Enumeration& into) {
        if (!optionalName(name, names, into)) field_.fail(std::string(name) + " is missing");
    }
    /// Asks for a member without reading it; null when it is absent.
    const Json* take(std::string_view name);

    /// Call it after the last member.
    void finish() const;

private:
    [[nodiscard]] bool isKnown(std::string_view name) const;

    JsonField field_;
    const JsonObject* object_;
    std::array<std::string_view, 48> known_;
    std::size_t knownCount_ = 0;
    std::size_t takenCount_ = 0;
};

}  // namespace orvel::replay
