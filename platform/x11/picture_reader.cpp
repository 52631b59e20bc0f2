#include "platform/x11/picture_reader.hpp"

#include <algorithm>
#include <bit>

namespace orvel::x11 {

namespace {

constexpr std::uint32_t kAllPlanes = ~0U;

const xcb_format_t* formatOf(const xcb_setup_t& setup, int depth) {
    const auto* formats = xcb_setup_pixmap_formats(&setup);
    const auto* end = formats + xcb_setup_pixmap_formats_length(&setup);
    const auto* found =
        std::find_if(formats, end, [depth](const auto& each) { return each.depth == depth; });
    return found == end ? nullptr : found;
}

/// The visual of this number among those of a depth, else the first with fixed colours.
const xcb_visualtype_t* visualOf(const xcb_screen_t& screen, int depth, xcb_visualid_t wanted) {
    const xcb_visualtype_t* first = nullptr;
    for (auto depths = xcb_screen_allowed_depths_iterator(&screen); depths.rem > 0;
         xcb_depth_next(&depths)) {
        if (depths.data->depth != depth) continue;
        for (auto visuals = xcb_depth_visuals_iterator(depths.data); visuals.rem > 0;
             xcb_visualtype_next(&visuals)) {
            if (visuals.data->visual_id == wanted) return visuals.data;
            if (first == nullptr && visuals.data->_class == XCB_VISUAL_CLASS_TRUE_COLOR)
                first = visuals.data;
        }
    }
    return first;
}

std::size_t lineBytes(int width, const xcb_format_t& format) {
    const auto bits = static_cast<std::size_t>(width) * format.bits_per_pixel;
    const std::size_t pad = format.scanline_pad;
    return (bits + pad - 1) / pad * pad / 8;
}

}  // namespace

std::optional<PixelLayout> PictureReader::layoutOf(int depth, xcb_visualid_t visual) const {
    const auto& setup = *xcb_get_setup(server_.raw());
    const auto* format = formatOf(setup, depth);
    const auto* colours = visualOf(server_.screen(), depth, visual);
    if (format == nullptr || colours == nullptr) return std::nullopt;
    const bool isServerBig = setup.image_byte_order == XCB_IMAGE_ORDER_MSB_FIRST;
    PixelLayout layout{.bitsPerPixel = format->bits_per_pixel,
                       .isSwapped = isServerBig != (std::endian::native == std::endian::big),
                       .red = colours->red_mask,
                       .green = colours->green_mask,
                       .blue = colours->blue_mask};
    const std::uint32_t used = depth >= 32 ? ~0U : (1U << static_cast<unsigned>(depth)) - 1;
    layout.alpha = used & ~(layout.red | layout.green | layout.blue);
    if (!layout.isReadable()) return std::nullopt;
    return layout;
}

std::optional<Bitmap> PictureReader::read(const PictureSource& source, Deadline deadline) {
    const auto layout = layoutOf(source.depth, source.visual);
    if (!layout) return std::nullopt;
    const RootRect& part = source.part;
    std::vector<RootRect> shape;
    for (const RootRect& each : source.shape)
        shape.push_back({each.x - part.x, each.y - part.y, each.width, each.height});
    ServerPixels pixels{.bytes = {},
                        .bytesPerLine = lineBytes(
                            part.width, *formatOf(*xcb_get_setup(server_.raw()), source.depth)),
                        .width = part.width,
                        .height = part.height,
                        .layout = *layout,
                        .shape = shape};
    const std::size_t size = pixels.bytesPerLine * static_cast<std::size_t>(part.height);
    Reply<xcb_get_image_reply_t> image;
    if (makeRoom(size, deadline)) {
        if (!readShared(source, deadline)) return std::nullopt;
        pixels.bytes = segment_->bytes().first(size);
    } else {
        image = readThroughConnection(source, deadline);
        if (image == nullptr) return std::nullopt;
        pixels.bytes = {reinterpret_cast<const std::byte*>(xcb_get_image_data(image.get())),
                        static_cast<std::size_t>(xcb_get_image_data_length(image.get()))};
    }
    Bitmap picture = shrink(pixels, pictureSizeFor(part.width, part.height));
    if (picture.isEmpty()) return std::nullopt;
    return picture;
}

bool PictureReader::hasSharedMemory() {
    constexpr std::size_t kAnything = 4096;
    return makeRoom(kAnything, deadlineIn(kServerLimit));
}

bool PictureReader::makeRoom(std::size_t size, Deadline deadline) {
    if (segment_ != nullptr && segment_->bytes().size() >= size) return true;
    if (isRefused_) return false;
    segment_.reset();
    segment_ = SharedSegment::make(server_, size, deadline);
    // A server that only had no time may take it later.
    isRefused_ = segment_ == nullptr && timeLeft(deadline) > Milliseconds::zero();
    return segment_ != nullptr;
}

bool PictureReader::readShared(const PictureSource& source, Deadline deadline) {
    const RootRect& part = source.part;
    const auto asked =
        xcb_shm_get_image(server_.raw(), source.pixmap, static_cast<std::int16_t>(part.x),
                          static_cast<std::int16_t>(part.y), static_cast<std::uint16_t>(part.width),
                          static_cast<std::uint16_t>(part.height), kAllPlanes,
                          XCB_IMAGE_FORMAT_Z_PIXMAP, segment_->id(), 0);
    return server_.reply<xcb_shm_get_image_reply_t>(asked, deadline) != nullptr;
}

Reply<xcb_get_image_reply_t> PictureReader::readThroughConnection(const PictureSource& source,
                                                                  Deadline deadline) {
    const RootRect& part = source.part;
    const auto asked = xcb_get_image(
        server_.raw(), XCB_IMAGE_FORMAT_Z_PIXMAP, source.pixmap, static_cast<std::int16_t>(part.x),
        static_cast<std::int16_t>(part.y), static_cast<std::uint16_t>(part.width),
        static_cast<std::uint16_t>(part.height), kAllPlanes);
    return server_.reply<xcb_get_image_reply_t>(asked, deadline);
}

}  // namespace orvel::x11
