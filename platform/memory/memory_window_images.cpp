#include "platform/memory/memory_window_images.hpp"

#include <cmath>

namespace orvel::memory {

namespace {

/// As high as the window's shape makes it.
int pixelHeight(const WorldWindow& window, int pixelWidth) {
    const AxRect& bounds = window.info.bounds;
    if (bounds.width <= 0 || bounds.height <= 0) return pixelWidth;
    const double height = pixelWidth * bounds.height / bounds.width;
    return height < 1e9 ? static_cast<int>(std::lround(height)) : 1000000000;
}

}  // namespace

void MemoryWindowImages::requestPermission() {
    effects_.effect("permission")->value("screenRecordingRequest");
}

std::optional<Picture> MemoryWindowImages::capture(WindowNumber number) {
    const WorldWindow* window = world_.window(number);
    if (!hasPermission() || window == nullptr || !window->capturePixelWidth) return std::nullopt;
    const int width = *window->capturePixelWidth;
    return Picture{width, pixelHeight(*window, width), ++lastSerial_, nullptr};
}

}  // namespace orvel::memory
