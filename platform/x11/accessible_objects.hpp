#pragma once

#include "platform/x11/accessibility_bus.hpp"
#include "platform/x11/root_layout.hpp"

#include <cstdint>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

namespace orvel::x11 {

/// The object that holds everything an application shows.
[[nodiscard]] AccessibleId rootOf(const std::string& application);

/// The text that an answer consists of.
[[nodiscard]] std::optional<std::string> stringIn(const BusAnswer& answer);

/// Absent when the object is gone or its application does not answer; so with what follows.
[[nodiscard]] std::optional<std::vector<AccessibleId>> childrenOf(const AccessibilityBus& bus,
                                                                  const AccessibleId& object,
                                                                  Deadline deadline);
[[nodiscard]] std::optional<std::string> nameOf(const AccessibilityBus& bus,
                                                const AccessibleId& object, Deadline deadline);
/// Everything that stands in a text.
[[nodiscard]] std::optional<std::string> textOf(const AccessibilityBus& bus,
                                                const AccessibleId& object, Deadline deadline);
[[nodiscard]] bool isShowing(const AccessibilityBus& bus, const AccessibleId& object,
                             Deadline deadline);

/// What an object says of itself.
struct AccessibleLook {
    bool isFocused = false;
    bool isPassword = false;
    bool operator==(const AccessibleLook&) const = default;
};

/// Absent when the object is gone or its application does not answer.
[[nodiscard]] std::optional<AccessibleLook> lookAt(const AccessibilityBus& bus,
                                                   const AccessibleId& object, Deadline deadline);

/// When a search is given up.
struct SearchLimits {
    Deadline deadline;
    /// An application that is silent for so long hangs. Absent: until the deadline.
    std::optional<Milliseconds> eachCall = std::nullopt;
    std::stop_token stop = {};
};

/// Asks an application's objects one by one; for those whose focus was not told.
[[nodiscard]] FocusSearch findFocus(const AccessibilityBus& bus, const std::string& application,
                                    const SearchLimits& limits);

/// Where the insertion point of a text lies in the root window: no width, as high as the line.
/// Absent for what has none, and for an application that names no place on the screen.
[[nodiscard]] std::optional<RootRect> caretOf(const AccessibilityBus& bus,
                                              const AccessibleId& object, Deadline deadline);

}  // namespace orvel::x11
