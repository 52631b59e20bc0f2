#pragma once

#include "platform/macos/mac_cf_ref.hpp"

namespace orvel::macos {

/// While it lives, the system does not let this program nap. A program without a window would
/// otherwise get its timers late and little of the processor, and every key waits for this one.
/// The machine may sleep all the same.
class Attention {
public:
    Attention();
    ~Attention();
    Attention(const Attention&) = delete;
    Attention& operator=(const Attention&) = delete;

private:
    CfRef<CFTypeRef> activity_;
};

}  // namespace orvel::macos
