#pragma once

#include "platform/macos/mac_cf_ref.hpp"
#include "platform/window_list.hpp"

#include <CoreGraphics/CoreGraphics.h>
#include <os/availability.h>

namespace orvel::macos {

/// Null when the window cannot be captured within a limit.
CfRef<CGImageRef> captureByScreenCaptureKit(WindowNumber number) API_AVAILABLE(macos(14.0));
/// The way before macOS 14.
CfRef<CGImageRef> captureByWindowServer(WindowNumber number);

}  // namespace orvel::macos
