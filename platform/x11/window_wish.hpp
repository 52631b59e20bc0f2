#pragma once

#include "platform/x11/size_hints.hpp"
#include "platform/x11/window_state.hpp"

#include <optional>

namespace orvel::x11 {

struct PixelPlace {
    int x = 0;
    int y = 0;
    bool operator==(const PixelPlace&) const = default;
};

/// What a window was asked to become. Places and sizes are those of the window that people see.
class WindowWish {
public:
    void moveTo(PixelPlace place);
    /// `taken` is what the window is expected to make of `wanted`, in a frame like this one.
    void resizeTo(PixelSize wanted, PixelSize taken, const WindowFrame& frame);
    void minimize(bool isMinimized) { isMinimized_ = isMinimized; }
    void leaveMaximized() { leavesMaximized_ = true; }

    /// The window as it will be.
    [[nodiscard]] WindowState applied(WindowState now) const;

    /// What is to be asked for again.
    struct Correction {
        std::optional<PixelPlace> place;
        std::optional<PixelSize> size;
    };
    /// Compares with what became of the window. Absent when all is well, or when it was asked for
    /// often enough.
    [[nodiscard]] std::optional<Correction> correct(const WindowState& now);
    /// Whether the window is still to be hidden or shown: a window manager that draws how windows
    /// come and go takes its time for that.
    [[nodiscard]] bool isUnderWay(const WindowState& now) const {
        return isMinimized_ && *isMinimized_ != now.isMinimized;
    }

private:
    [[nodiscard]] std::optional<PixelPlace> placeFor(const RootRect& seen) const;

    std::optional<PixelPlace> place_;
    /// The place at which the size was asked for, when another one was asked for afterwards.
    std::optional<PixelPlace> corner_;
    std::optional<PixelSize> wanted_;
    PixelSize taken_;
    WindowFrame frame_;
    std::optional<bool> isMinimized_;
    bool leavesMaximized_ = false;
    int corrections_ = 0;
};

}  // namespace orvel::x11
