#pragma once

#include "platform/macos/mac_observation.hpp"

#include <functional>
#include <vector>

namespace orvel::macos {

/// How people want surfaces to look, as the system's settings have it.
struct Look {
    bool isDark = false;
    bool isTranslucent = true;
    bool isStill = false;  ///< as little motion as possible

    bool operator==(const Look&) const = default;
};

/// Needs the application object. Main thread.
Look readLook();

/// Tells that the look may have changed, soon after it did. Main thread.
class LookNotices {
public:
    explicit LookNotices(std::function<void()> told);

private:
    std::vector<Observation> observations_;
};

}  // namespace orvel::macos
