#pragma once

#include "platform/macos/mac_cf_ref.hpp"
#include "platform/panels.hpp"

#include <optional>

namespace orvel::macos {

/// What panels show. The panels themselves are native; the views in them may be anybody's. Without
/// more than the first answer a panel is an empty frame.
class PanelContents {
public:
    virtual ~PanelContents() = default;

    /// The view (an NSView) of a panel that is being made, with so much room around it; null for
    /// an empty one. Stays with these contents.
    virtual CFTypeRef viewOf(PanelId panel, double padding) = 0;
    /// The view that gets what is typed while the panel is key; null for none. Not owned.
    virtual CFTypeRef keyViewOf(PanelId) { return nullptr; }
    /// The size that the content asks for, room included; absent when it asks for none.
    [[nodiscard]] virtual std::optional<Size> fittingSizeOf(PanelId) const { return std::nullopt; }
    /// The panel comes on screen, or went off.
    virtual void setShown(PanelId, bool) {}
};

}  // namespace orvel::macos
