#pragma once

#include "platform/essentials.hpp"

namespace orvel::x11 {

class InputHub;
class X11EventTap;

/// A running session has a server with all it needs: only keyboards come and go, and may be held
/// by another program.
class X11Essentials final : public Essentials {
public:
    X11Essentials(InputHub& hub, const X11EventTap& tap) : hub_(hub), tap_(tap) {}

    [[nodiscard]] std::vector<EssentialFinding> check() override;

private:
    InputHub& hub_;
    const X11EventTap& tap_;
};

}  // namespace orvel::x11
