#pragma once

#include "platform/macos/mac_cf_ref.hpp"
#include "platform/panels.hpp"

namespace orvel::macos {

/// What panels show. The panels themselves are native; the views in them may be anybody's.
class PanelContents {
public:
    virtual ~PanelContents() = default;

    /// The view (an NSView) of a panel, with so much room around it; null for an empty one. Stays
    /// with these contents.
    virtual CFTypeRef viewOf(PanelId panel, double padding) = 0;
};

}  // namespace orvel::macos
