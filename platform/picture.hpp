#pragma once

#include <cstdint>
#include <memory>

namespace orvel {

/// A picture that the desktop gave. Copies share the pixels.
struct Picture {
    int pixelWidth = 0;
    int pixelHeight = 0;
    /// Tells pictures of the same run apart in transcripts.
    std::int64_t serial = 0;
    /// The back end's own image; null on a desktop without pixels.
    std::shared_ptr<const void> native;
};

}  // namespace orvel
