#pragma once

#include <string_view>

namespace orvel {

/// Where this program reports. Any thread.
class Log {
public:
    virtual ~Log() = default;

    /// One line on standard output.
    virtual void line(std::string_view text) = 0;
    /// Whether trace lines are taken at this moment: the user asked for them, and nothing is known
    /// to be typed in secret.
    [[nodiscard]] virtual bool isTracing() const = 0;
    /// One line for the debug trace file; dropped while not `isTracing()`, and when it turns out to
    /// hold a secret.
    virtual void trace(std::string_view text) = 0;
};

}  // namespace orvel
