#pragma once

#include "platform/x11/hid_state.hpp"

namespace orvel::x11 {

/// Backspace, Escape and Return held together: the way out when keys do not do what they should.
class PanicChord {
public:
    /// True once each time the three come to be held, however they are spread over keyboards.
    bool isStruckBy(const HidState& state) {
        const bool wasHeld = isHeld_;
        isHeld_ = state.isDown(key::backspace) && state.isDown(key::escape) &&
                  state.isDown(key::returnKey);
        return isHeld_ && !wasHeld;
    }

private:
    bool isHeld_ = false;
};

}  // namespace orvel::x11
