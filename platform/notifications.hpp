#pragma once

#include "platform/panels.hpp"

#include <functional>
#include <memory>
#include <optional>
#include <string_view>

namespace orvel {

enum class NotificationName {
    windowDidResignKey,  ///< a panel of this program stopped receiving the keyboard
    applicationDidResignActive,
};

/// Keeps an observer installed; removes it when destroyed.
class NotificationObserver {
public:
    virtual ~NotificationObserver() = default;
};

/// The program's own notifications. Main thread.
class Notifications {
public:
    virtual ~Notifications() = default;

    /// `panel` absent: any sender. `owner` names the observer in transcripts.
    [[nodiscard]] virtual std::unique_ptr<NotificationObserver> observe(
        NotificationName name, std::optional<PanelId> panel, std::string_view owner,
        std::function<void()> handler) = 0;
};

}  // namespace orvel
