#pragma once

#include <CoreFoundation/CoreFoundation.h>

namespace orvel::macos {

/// What the system calls this program.
inline constexpr const char* kBundleIdentifier = "app.orvel.orvelkit";

/// The settings of this program (an NSUserDefaults), also when it was started outside of its
/// bundle, as a command line may do. Not owned.
CFTypeRef userDefaults();

}  // namespace orvel::macos
