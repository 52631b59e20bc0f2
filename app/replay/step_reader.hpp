#pragma once

#include "platform/base/json.hpp"

#include <array>
#include <cstdint>
#include <functional>
#include <istream>
#include <optional>
#include <string>
#include <string_view>

namespace orvel::replay {

enum class StepKey { pref, world, launch, terminate, event, advance, call, click, query };

inline constexpr std::array<std::string_view, 9> kStepKeys{
    "pref", "world", "launch", "terminate", "event", "advance", "call", "click", "query"};

/// One line of a replay: what is to happen, and with what.
struct Step {
    StepKey key = StepKey::pref;
    Json value;
};

/// Takes a replay apart: one step after the other, blank lines and comments left out.
class StepReader {
public:
    /// `beforeWaiting` is called when the input may keep the reader waiting for more.
    StepReader(std::istream& in, std::function<void()> beforeWaiting)
        : in_(in), beforeWaiting_(std::move(beforeWaiting)) {}

    /// Finds the next line that is neither blank nor a comment; false at the end.
    bool nextLine();
    /// That line, and its number in the input.
    [[nodiscard]] std::string_view line() const { return line_; }
    [[nodiscard]] std::int64_t lineNumber() const { return lineNumber_; }

private:
    std::istream& in_;
    std::function<void()> beforeWaiting_;
    std::string buffer_;
    std::string_view line_;
    std::int64_t lineNumber_ = 0;
};

/// Reads one line of a replay as a step; the failure says what is wrong with it.
Result<Step> parseStep(std::string_view line);

}  // namespace orvel::replay
