#pragma once

#include <functional>
#include <string>

namespace orvel::rig {

/// The lines that a client program is told on standard input.
class LineInput {
public:
    using Obey = std::function<void(const std::string& line)>;

    /// Reads what has arrived, or waits for it, and calls `obey` for each whole line; false when
    /// there will be no more.
    [[nodiscard]] bool read(const Obey& obey);

private:
    std::string unfinished_;
};

}  // namespace orvel::rig
