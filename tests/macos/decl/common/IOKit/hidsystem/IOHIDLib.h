#pragma once
#include <IOKit/IOKitLib.h>

extern "C" {
kern_return_t IOHIDSetModifierLockState(io_connect_t, int, bool);
}
