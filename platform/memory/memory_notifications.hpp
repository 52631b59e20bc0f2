#pragma once

#include "platform/memory/effect_log.hpp"
#include "platform/notifications.hpp"

#include <string>
#include <vector>

namespace orvel::memory {

class MemoryNotifications final : public Notifications {
public:
    explicit MemoryNotifications(EffectLog& effects) : effects_(effects) {}

    [[nodiscard]] std::unique_ptr<NotificationObserver> observe(
        NotificationName name, std::optional<PanelId> panel, std::string_view owner,
        std::function<void()> handler) override;

    /// Tells every observer of that name and sender, in order of installation.
    void post(NotificationName name, std::optional<PanelId> sender);

private:
    struct Observer {
        NotificationName name;
        std::optional<PanelId> panel;
        std::string owner;
        std::function<void()> handler;
    };
    using List = std::vector<std::shared_ptr<const Observer>>;
    class Token;

    static void logChange(EffectLog& effects, std::string_view op, const Observer& observer);

    EffectLog& effects_;
    /// Shared with the tokens, which may outlive the desktop.
    std::shared_ptr<List> observers_ = std::make_shared<List>();
};

}  // namespace orvel::memory
