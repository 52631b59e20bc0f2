#pragma once

#include "platform/base/result.hpp"
#include "platform/x11/glib_holders.hpp"

#include <chrono>
#include <string>

namespace orvel::x11 {

enum class Bus { system, session };

/// How long a bus and the one who is called may take together.
inline constexpr std::chrono::milliseconds kBusLimit{2000};

/// What came of a call. One who refuses, or does not know what he was asked, has answered; one who
/// hangs has not.
struct BusAnswer {
    GVariantHolder reply;  ///< null on any failure
    bool isAnswered = false;
};

/// The library ends the program when a bus goes away that it uses for itself. From here on it does
/// not. May wait for the bus.
void outliveBuses();

/// One connection to a message bus. It is not the library's shared one, so that a bus that goes
/// away ends nothing but the calls that are under way. One thread.
class BusConnection {
public:
    [[nodiscard]] static Result<BusConnection> open(Bus bus,
                                                    std::chrono::milliseconds limit = kBusLimit);
    [[nodiscard]] static Result<BusConnection> openAddress(
        const std::string& address, std::chrono::milliseconds limit = kBusLimit);

    /// Calls and waits. `parameters` is a floating variant that is taken over, or null. The failure
    /// is the message of the error.
    [[nodiscard]] Result<GVariantHolder> call(const char* name, const char* path,
                                              const char* interface, const char* method,
                                              GVariant* parameters,
                                              std::chrono::milliseconds limit = kBusLimit) const;
    /// Whether somebody answers to that name now.
    [[nodiscard]] bool hasOwner(const char* name) const;
    [[nodiscard]] GDBusConnection* raw() const { return connection_.get(); }

private:
    explicit BusConnection(GDBusConnection* connection) : connection_(connection) {}

    GObjectHolder<GDBusConnection> connection_;
};

}  // namespace orvel::x11
