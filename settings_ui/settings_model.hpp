#pragma once

#include "app/preference_keys.hpp"
#include "platform/base/published.hpp"
#include "settings_ui/remap_editor_model.hpp"

#include <cstdint>
#include <optional>

namespace orvel {

class OrvelEngine;
class Preferences;
class TaskbarSwitch;

/// The settings panel without its looks: the fifteen switches, the master switch and the keyboard
/// editor, bound to the stored settings, and the engine kept in step with them. Main thread.
class SettingsModel {
public:
    SettingsModel(Preferences& preferences, OrvelEngine& engine, TaskbarSwitch& taskbar);

    /// The panel comes on screen.
    void appear();

    /// What a card shows now.
    [[nodiscard]] bool isCardOn(PreferenceKey card) const;
    [[nodiscard]] bool isAllOn() const;
    [[nodiscard]] bool isAnyOn() const;

    void setCard(PreferenceKey card, bool isOn);
    /// Turns every card on or off.
    void setMaster(bool isOn);
    void setMap(PreferenceKey map, ModifierTarget target);
    void setDeleteStrategy(DeleteStrategy strategy);
    void setComboModifier(ComboModifier modifier);
    void setSacrificeKey(SingleSacrificeKey key);
    /// Lets a paused engine work again.
    void resume();

    [[nodiscard]] const RemapEditorModel& editor() const { return editor_; }
    /// Grows with every action, so that views read everything again.
    [[nodiscard]] const Published<std::uint64_t>& revision() const { return revision_; }

private:
    void writeCard(PreferenceKey card, bool isOn);
    void copySwitchesToEngine();
    void enableEngine();
    void finishAction();

    Preferences& preferences_;
    OrvelEngine& engine_;
    TaskbarSwitch& taskbar_;
    RemapEditorModel editor_;
    /// The engine's master switch as set from here last; absent until the panel was shown.
    std::optional<bool> lastEnabled_;
    Published<std::uint64_t> revision_;
};

}  // namespace orvel
