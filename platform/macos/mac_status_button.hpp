#pragma once

#include "platform/macos/mac_cf_ref.hpp"

namespace orvel::macos {

/// The button of the status item (an NSView), for menus that pop up in it.
class StatusButton {
public:
    void set(CFTypeRef button) { button_ = CfRef<CFTypeRef>::retaining(button); }
    void forget() { button_ = {}; }
    /// Null while there is no item. Not owned.
    [[nodiscard]] CFTypeRef view() const { return button_.get(); }

private:
    CfRef<CFTypeRef> button_;
};

}  // namespace orvel::macos
