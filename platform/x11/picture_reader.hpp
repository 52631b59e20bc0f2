#pragma once

#include "platform/base/bitmap.hpp"
#include "platform/x11/root_layout.hpp"
#include "platform/x11/service_connection.hpp"
#include "platform/x11/shared_segment.hpp"
#include "platform/x11/window_pixels.hpp"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace orvel::x11 {

/// The pixels of a window, in one pixmap.
struct PictureSource {
    xcb_pixmap_t pixmap = XCB_PIXMAP_NONE;
    int depth = 0;
    xcb_visualid_t visual = 0;  ///< of the window that drew them; 0 when not known
    RootRect part;              ///< what of them is read; lies inside the pixmap
    /// What of the pixmap the window covers; empty for all of it.
    std::vector<RootRect> shape{};
};

/// Reads pixels out of the server: through shared memory where it is granted, else through the
/// connection. Main thread.
class PictureReader {
public:
    explicit PictureReader(ServiceConnection& server) : server_(server) {}

    /// At the size in which pictures are kept; absent when the server does not give the pixels in
    /// time.
    [[nodiscard]] std::optional<Bitmap> read(const PictureSource& source, Deadline deadline);

    /// Whether the server writes into memory of ours.
    [[nodiscard]] bool hasSharedMemory();

private:
    [[nodiscard]] std::optional<PixelLayout> layoutOf(int depth, xcb_visualid_t visual) const;
    [[nodiscard]] bool makeRoom(std::size_t size, Deadline deadline);
    [[nodiscard]] bool readShared(const PictureSource& source, Deadline deadline);
    [[nodiscard]] Reply<xcb_get_image_reply_t> readThroughConnection(const PictureSource& source,
                                                                     Deadline deadline);

    ServiceConnection& server_;
    /// Kept from one picture to the next: touching fresh memory takes longer than reading into it.
    std::unique_ptr<SharedSegment> segment_;
    /// A server that refused once is not asked again.
    bool isRefused_ = false;
};

}  // namespace orvel::x11
