#pragma once

#include "platform/app_control.hpp"

#include <functional>

namespace orvel::x11 {

/// This program in an X11 session. A session has one copy of it: another one ends before it gets
/// here and has the first one open its panel.
class X11AppControl final : public AppControl {
public:
    /// `end` ends the program after what it does now.
    explicit X11AppControl(std::function<void()> end) : end_(std::move(end)) {}

    [[nodiscard]] ProcessId ownPid() const override;
    [[nodiscard]] std::vector<ProcessId> runningInstances() const override;
    /// A panel that can become key takes the focus as it comes on screen; nothing is left to do.
    void activateSelf() override {}
    void closeStrayWindows() override {}
    void terminate() override { end_(); }

private:
    std::function<void()> end_;
};

}  // namespace orvel::x11
