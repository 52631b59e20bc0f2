#pragma once

#include <string>

namespace orvel {

/// What one service of the desktop can do for us, as `orvel doctor` shows it.
struct ServiceCheck {
    std::string name;
    bool isOk = false;
    /// Whether the program is of no use without it.
    bool isEssential = false;
    /// What was found; with `isOk` false what stops working.
    std::string finding;
    /// What to do; empty when nothing need be done.
    std::string remedy;
};

}  // namespace orvel
