#pragma once
#include <IOKit/IOKitLib.h>

#define kIOHIDSystemClass "IOHIDSystem"
enum { kIOHIDParamConnectType = 1, kIOHIDCapsLockState = 1 };
