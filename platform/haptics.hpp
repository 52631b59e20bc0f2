#pragma once

namespace orvel {

/// The touchpad's motor. Main thread.
class Haptics {
public:
    virtual ~Haptics() = default;

    /// Plays one short pattern; nothing happens where there is no motor.
    virtual void tap() = 0;
};

}  // namespace orvel
