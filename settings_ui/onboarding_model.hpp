#pragma once

#include "platform/base/published.hpp"
#include "platform/essentials.hpp"
#include "platform/run_loop.hpp"

#include <cstddef>
#include <memory>
#include <vector>

namespace orvel {

class Launcher;
class OrvelEngine;

/// What stands in place of the settings while something essential is missing. It looks again every
/// second while the panel is on screen, and starts the engine as soon as it can work. Main thread.
class OnboardingModel {
public:
    OnboardingModel(Essentials& essentials, Launcher& launcher, RunLoop& runLoop,
                    OrvelEngine& engine);

    /// The panel comes on screen or leaves it.
    void setShown(bool isShown);

    /// True while something is missing, and a moment longer, so that the last tick is seen.
    [[nodiscard]] const Published<bool>& isNeeded() const { return isNeeded_; }
    [[nodiscard]] const Published<std::vector<EssentialFinding>>& findings() const {
        return findings_;
    }
    [[nodiscard]] bool isComplete() const { return missing() == 0; }
    /// How many essential things are not there.
    [[nodiscard]] std::ptrdiff_t missing() const;

    /// Tries to start the engine now, which is how the keyboard is asked for.
    void retry();
    /// Opens the place where the user can mend it, if there is one.
    void openSettings(Essential essential);
    /// Shows the settings until the panel is opened again.
    void dismiss();

private:
    void check();
    [[nodiscard]] bool isAnyMendedBy(const std::vector<EssentialFinding>& found) const;

    Essentials& essentials_;
    Launcher& launcher_;
    RunLoop& runLoop_;
    OrvelEngine& engine_;
    Published<bool> isNeeded_{false};
    Published<std::vector<EssentialFinding>> findings_;
    bool isDismissed_ = false;
    std::unique_ptr<Timer> nextCheck_;
    std::unique_ptr<Timer> givesWay_;
};

}  // namespace orvel
