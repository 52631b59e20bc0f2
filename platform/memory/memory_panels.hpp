#pragma once

#include "platform/memory/effect_log.hpp"
#include "platform/panels.hpp"

#include <vector>

namespace orvel::memory {

/// What is known of a panel that exists.
struct PanelState {
    PanelSpec spec;
    ScreenRect frame;
    bool isVisible = false;
};

/// Panels without views: what they contain asks for the size that they were made with.
class MemoryPanels final : public Panels {
public:
    explicit MemoryPanels(EffectLog& effects) : effects_(effects) {}

    [[nodiscard]] std::unique_ptr<Panel> create(const PanelSpec& spec) override;

    /// The panel of that id, null when none exists.
    [[nodiscard]] const PanelState* existing(PanelId id) const;

private:
    using List = std::vector<std::shared_ptr<PanelState>>;
    class MemoryPanel;

    EffectLog& effects_;
    /// Shared with the panels, which may outlive the desktop.
    std::shared_ptr<List> panels_ = std::make_shared<List>();
};

}  // namespace orvel::memory
