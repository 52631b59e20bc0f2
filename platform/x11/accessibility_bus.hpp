#pragma once

#include "platform/base/result.hpp"
#include "platform/x11/accessible_id.hpp"
#include "platform/x11/bus_call.hpp"
#include "platform/x11/service_connection.hpp"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace orvel::x11 {

/// A connection to the bus on which applications tell what they show, with the calls of its
/// protocol made directly: no library between that could end the program or wait without an end.
/// Any thread.
class AccessibilityBus {
public:
    /// Told on a thread of the connection: in the order in which an application said it, and before
    /// any later answer of that application reaches a caller.
    using FocusTold = std::function<void(const AccessibleId&, bool isFocused)>;

    /// Finds the bus, has it started where it can be, and has every application tell when the focus
    /// moves.
    [[nodiscard]] static Result<std::unique_ptr<AccessibilityBus>> open(FocusTold told);
    ~AccessibilityBus();
    AccessibilityBus(const AccessibilityBus&) = delete;
    AccessibilityBus& operator=(const AccessibilityBus&) = delete;

    /// `parameters` is a floating variant that is taken over, or null.
    [[nodiscard]] BusAnswer call(const AccessibleId& object, const char* interface,
                                 const char* method, GVariant* parameters, Deadline deadline) const;
    /// A call to the bus itself.
    [[nodiscard]] BusAnswer askBus(const char* method, GVariant* parameters,
                                   Deadline deadline) const;
    [[nodiscard]] std::string ownName() const;
    [[nodiscard]] bool isOpen() const;

private:
    AccessibilityBus(BusConnection connection, FocusTold told);
    [[nodiscard]] Result<> listen();
    static GDBusMessage* receive(GDBusConnection* connection, GDBusMessage* message,
                                 gboolean isIncoming, gpointer told);

    BusConnection connection_;
    unsigned filter_ = 0;
};

/// Whether the desktop's switch for accessibility is on; absent when there is no such service. Asks
/// the session bus.
[[nodiscard]] std::optional<bool> isAccessibilitySwitchedOn();

}  // namespace orvel::x11
