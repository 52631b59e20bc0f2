#pragma once

#include "platform/base/geometry.hpp"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvel {

using ProcessId = std::int32_t;

/// Names one accessibility window. Copies name the same window; the window may be gone.
struct AxWindow {
    std::shared_ptr<const void> element;
};

/// What one read of a window gave; an absent member could not be read.
struct AxWindowAttributes {
    std::optional<std::string> role;
    std::optional<std::string> title;
    std::optional<AxPoint> position;
    std::optional<Size> size;
    std::optional<bool> isMinimized;
};

/// Other applications' windows. Every call may wait for the application that owns the window;
/// writes return false when the application did not take them. Main thread.
class AccessibilityWindows {
public:
    virtual ~AccessibilityWindows() = default;

    /// Gives all following calls together `budget`. Once it is used up no application and no window
    /// manager is waited for: reads fail, and so do writes, which may have been asked for all the
    /// same. Without a budget each call has the desktop's own limit.
    virtual void setBudget(std::optional<std::chrono::milliseconds> budget) = 0;

    /// Absent when it cannot be read or there is none.
    [[nodiscard]] virtual std::optional<AxWindow> focusedWindow(ProcessId pid) const = 0;
    /// In the application's order; absent when they cannot be read.
    [[nodiscard]] virtual std::optional<std::vector<AxWindow>> windows(ProcessId pid) const = 0;
    [[nodiscard]] virtual AxWindowAttributes attributes(const AxWindow& window) const = 0;

    virtual bool setPosition(const AxWindow& window, AxPoint position) = 0;
    virtual bool setSize(const AxWindow& window, Size size) = 0;
    virtual bool setMinimized(const AxWindow& window, bool minimized) = 0;
    virtual bool raise(const AxWindow& window) = 0;
    virtual bool setMain(const AxWindow& window, bool isMain) = 0;
    virtual bool setFocused(const AxWindow& window, bool isFocused) = 0;
};

}  // namespace orvel
