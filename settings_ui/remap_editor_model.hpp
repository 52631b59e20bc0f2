#pragma once

#include "app/preference_keys.hpp"
#include "engine/remap_model.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace orvel {

class Preferences;

/// A modifier key that acts as something else.
struct ChangedMap {
    std::string_view label;  ///< of the drawn key, left and right told apart
    ModifierTarget target;
};

/// What the drawn keyboard shows and writes: what each modifier acts as, and the key that deletes
/// forward. Values that are none of the choices are shown as the default. Main thread.
class RemapEditorModel {
public:
    explicit RemapEditorModel(Preferences& preferences);

    [[nodiscard]] ModifierTarget target(PreferenceKey map) const;
    [[nodiscard]] bool isRemapped(PreferenceKey map) const;
    void setTarget(PreferenceKey map, ModifierTarget target);

    [[nodiscard]] DeleteStrategy strategy() const;
    [[nodiscard]] ComboModifier comboModifier() const;
    [[nodiscard]] SingleSacrificeKey sacrificeKey() const;
    void setStrategy(DeleteStrategy strategy);
    void setComboModifier(ComboModifier modifier);
    void setSacrificeKey(SingleSacrificeKey key);

    /// Writes the usual mapping of a Windows keyboard, unless the user mapped any key.
    void applyPresetToUntouchedMaps();

    /// In the order of the keys.
    [[nodiscard]] std::vector<ChangedMap> changedMaps() const;
    /// The text of the modifier card.
    [[nodiscard]] std::string modifierText() const;
    /// What the maps mean, in a sentence for the card's popover.
    [[nodiscard]] std::string modifierHelp() const;
    /// The text of the forward-delete card.
    [[nodiscard]] std::string ejectText() const;
    /// What forward delete means now, in a sentence for the card's popover.
    [[nodiscard]] std::string ejectHelp() const;
    /// The face of the Delete key as one text: ⌫, `Shift + ⌫` or `F12 → ⌦`.
    [[nodiscard]] std::string deleteKeyFace() const;

private:
    [[nodiscard]] std::string describedMaps() const;

    Preferences& preferences_;
};

/// Item texts of the editor's menus, in the order of the choices.
std::vector<std::string> mapMenuTitles();
std::vector<std::string> strategyMenuTitles();
std::vector<std::string> comboMenuTitles();
std::vector<std::string> sacrificeMenuTitles();

}  // namespace orvel
