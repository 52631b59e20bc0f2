#pragma once

#include "app/absent_rooms.hpp"
#include "app/preferences.hpp"
#include "engine/orvel_engine.hpp"
#include "platform/desktop.hpp"

namespace orvel {

/// Composition root: owns one of every manager and builds them in start order. The desktop
/// outlives it. Main thread.
class Application {
public:
    explicit Application(Desktop& desktop);

    [[nodiscard]] Preferences& preferences() { return preferences_; }
    [[nodiscard]] OrvelEngine& engine() { return engine_; }

private:
    Preferences preferences_;
    AbsentOverlay overlay_;
    AbsentClipboard clipboard_;
    AbsentFinderMenu finderMenu_;
    OrvelEngine engine_;
};

}  // namespace orvel
