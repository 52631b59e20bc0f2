#pragma once

namespace orvel {

/// What the settings ask of the desktop overlay. Main thread.
class TaskbarSwitch {
public:
    virtual ~TaskbarSwitch() = default;

    virtual void setTaskbarEnabled(bool isEnabled) = 0;
};

}  // namespace orvel
