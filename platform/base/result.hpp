#pragma once

#include <string>
#include <utility>
#include <variant>

namespace orvel {

/// Why an operation of the desktop failed, in the words of the desktop.
struct Failure {
    std::string message;
};

/// A value or the failure that took its place. `Result<>` carries no value.
template <typename Value = std::monostate>
class [[nodiscard]] Result {
public:
    Result() = default;
    Result(Value value) : state_(std::move(value)) {}
    Result(Failure failure) : state_(std::move(failure)) {}

    [[nodiscard]] bool ok() const { return std::holds_alternative<Value>(state_); }
    explicit operator bool() const { return ok(); }

    /// Only while `ok()`.
    [[nodiscard]] const Value& value() const& { return std::get<Value>(state_); }
    [[nodiscard]] Value&& value() && { return std::get<Value>(std::move(state_)); }
    /// Only while not `ok()`.
    [[nodiscard]] const std::string& error() const { return std::get<Failure>(state_).message; }

private:
    std::variant<Value, Failure> state_;
};

}  // namespace orvel
