#pragma once

#include "platform/event.hpp"

#include <ApplicationServices/ApplicationServices.h>

namespace orvel::macos {

/// The abstract event that stands for one of the system's.
Event readEvent(CGEventType type, CGEventRef event);
/// Writes into the system's event what differs between the two.
void writeChanges(const Event& before, const Event& after, CGEventRef event);

}  // namespace orvel::macos
