#pragma once

#include <CoreFoundation/CoreFoundation.h>

class QWindow;

namespace orvel::macos {

/// The view (an NSView) that a window of Qt draws in, to be put into a view of somebody else. Made
/// when asked for first. Not owned.
CFTypeRef nativeViewOf(QWindow& window);

}  // namespace orvel::macos
