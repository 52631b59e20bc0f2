#pragma once

#include "platform/macos/mac_cf_ref.hpp"
#include "platform/picture.hpp"

#include <CoreGraphics/CoreGraphics.h>

namespace orvel::macos {

/// A picture with the pixels of `image`, made smaller when it is larger than any place that shows
/// one; empty for null. Its native form is a `Bitmap`.
Picture pictureOf(CGImageRef image);

}  // namespace orvel::macos
