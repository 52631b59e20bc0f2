#pragma once

#include <cstdint>
#include <vector>

namespace orvel {

/// What the program is of no use without. Each desktop has some of them.
enum class Essential : std::uint8_t {
    accessibilityPermission,  ///< the user allows this program to see and send input
    effectivePermission,      ///< the system acts on the permission that was given
    keyboard,                 ///< one is attached
    keyboardControl,          ///< no other program keeps the keyboard to itself
};

struct EssentialFinding {
    Essential essential;
    bool isThere;
    bool operator==(const EssentialFinding&) const = default;
};

/// Whether everything essential is there, asked as often as each second. Main thread.
class Essentials {
public:
    virtual ~Essentials() = default;

    /// All that this desktop knows of, those that hang on others behind them.
    [[nodiscard]] virtual std::vector<EssentialFinding> check() = 0;
};

}  // namespace orvel
