#pragma once

#include "platform/x11/bus_call.hpp"

#include <functional>
#include <string>

namespace orvel::x11 {

/// Tells who owns a name of a bus, now and whenever that changes. Belongs to the thread that made
/// it, on whose context it is told.
class NameWatch {
public:
    /// `appeared` is given the owner's address on the bus. The bus must live longer.
    NameWatch(const BusConnection& bus, const char* name,
              std::function<void(const std::string&)> appeared, std::function<void()> vanished);
    ~NameWatch();
    NameWatch(const NameWatch&) = delete;
    NameWatch& operator=(const NameWatch&) = delete;

private:
    std::function<void(const std::string&)> appeared_;
    std::function<void()> vanished_;
    unsigned watch_;
};

}  // namespace orvel::x11
