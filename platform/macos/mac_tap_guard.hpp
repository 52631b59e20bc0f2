#pragma once

#include "platform/macos/mac_session.hpp"
#include "platform/run_loop.hpp"

#include <functional>
#include <memory>
#include <optional>

namespace orvel::macos {

/// What can happen around an event tap without the tap being told.
enum class TapChange {
    trustLost,    ///< the permission was switched off or taken out of the list
    sessionLeft,  ///< another session has the screen, or this one is locked
    sessionEntered,
    secureInputBegan,  ///< from now on key events, releases too, pass the tap by
    secureInputStays,  ///< it has been on for so long that a person wonders
    lookAgain,         ///< nothing known; the machine may have slept
};

/// Looks after a tap for as long as it lives: twice a second, and whenever the system says that
/// something may have changed. Main thread.
class TapGuard {
public:
    /// `told` must not destroy the guard.
    TapGuard(std::function<void(TapChange, const SessionState&)> told);

    /// Whether a tap could be made at this moment. Asks the system anew: the quick answer stays
    /// "yes" when this program was taken out of the list of trusted ones.
    static bool canTap();

private:
    void look(bool isNotice);
    void lookAtSecureInput(const SessionState& session);

    std::function<void(TapChange, const SessionState&)> told_;
    std::unique_ptr<Timer> timer_;
    SessionNotices notices_;
    bool isTrusted_ = true;
    bool isActive_ = true;
    /// Looks since secure input began; absent while it is off.
    std::optional<int> secureLooks_;
};

}  // namespace orvel::macos
