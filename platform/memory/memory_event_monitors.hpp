#pragma once

#include "platform/event_monitors.hpp"
#include "platform/memory/effect_log.hpp"

#include <string>
#include <vector>

namespace orvel::memory {

/// A monitor that is installed now.
struct InstalledMonitor {
    MonitorScope scope;
    EventMask mask;
    std::string owner;
    MonitorHandler handler;
};

class MemoryEventMonitors final : public EventMonitors {
public:
    explicit MemoryEventMonitors(EffectLog& effects) : effects_(effects) {}

    [[nodiscard]] std::unique_ptr<EventMonitor> add(MonitorScope scope, EventMask mask,
                                                    std::string_view owner,
                                                    MonitorHandler handler) override;

    /// Tells the monitors of `scope` that watch the event, in order of installation. False when a
    /// local one consumed it; those after it are not told then.
    bool deliver(MonitorScope scope, const MonitoredEvent& event);
    /// In order of installation.
    [[nodiscard]] const std::vector<std::shared_ptr<const InstalledMonitor>>& installed() const {
        return *installed_;
    }

private:
    using List = std::vector<std::shared_ptr<const InstalledMonitor>>;
    class Token;

    EffectLog& effects_;
    /// Shared with the tokens, which may outlive the desktop.
    std::shared_ptr<List> installed_ = std::make_shared<List>();
};

std::string_view scopeName(MonitorScope scope);

}  // namespace orvel::memory
