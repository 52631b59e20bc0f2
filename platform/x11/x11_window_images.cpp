#include "platform/x11/x11_window_images.hpp"

#include "platform/x11/window_frame.hpp"
#include "platform/x11/window_properties.hpp"

#include <xcb/shape.h>

#include <memory>
#include <utility>
#include <vector>

namespace orvel::x11 {

namespace {

/// A whole workspace may be hidden at once, and keys shall pass between its pictures.
constexpr Milliseconds kBetweenHidden{5};

/// Everything asked about the pixels of a window before the first answer is read.
struct Question {
    xcb_get_geometry_cookie_t pixmap, client, top;
    xcb_translate_coordinates_cookie_t place;
    xcb_get_window_attributes_cookie_t attributes;
    PendingProperty frame, shadow;
    std::optional<xcb_shape_get_rectangles_cookie_t> shape;
};

Question ask(ServiceConnection& server, xcb_window_t client, const WindowPixmap& pixmap) {
    Question question{xcb_get_geometry(server.raw(), pixmap.pixmap),
                      xcb_get_geometry(server.raw(), client),
                      xcb_get_geometry(server.raw(), pixmap.top),
                      xcb_translate_coordinates(server.raw(), client, pixmap.top, 0, 0),
                      xcb_get_window_attributes(server.raw(), pixmap.top),
                      askProperty(server, client, server.atom("_NET_FRAME_EXTENTS")),
                      askProperty(server, client, server.atom("_GTK_FRAME_EXTENTS")),
                      {}};
    if (server.extensionEvents(xcb_shape_id))
        question.shape = xcb_shape_get_rectangles(server.raw(), pixmap.top, XCB_SHAPE_SK_BOUNDING);
    return question;
}

/// Beyond the rounded corners of a frame its pixmap holds whatever was there before.
std::vector<RootRect> takeShape(ServiceConnection& server, const Question& question, int border,
                                Deadline deadline) {
    if (!question.shape) return {};
    const auto answer = server.reply<xcb_shape_get_rectangles_reply_t>(*question.shape, deadline);
    std::vector<RootRect> shape;
    if (answer == nullptr) return shape;
    const auto* parts = xcb_shape_get_rectangles_rectangles(answer.get());
    const int count = xcb_shape_get_rectangles_rectangles_length(answer.get());
    // A single rectangle is a window without a shape of its own.
    if (count < 2) return shape;
    for (int each = 0; each < count; ++each)
        shape.push_back({parts[each].x + border, parts[each].y + border, parts[each].width,
                         parts[each].height});
    return shape;
}

/// The pixels that people see of a window; absent when it or its pixels are gone.
std::optional<PictureSource> take(ServiceConnection& server, const Question& question,
                                  Deadline deadline) {
    const auto pixmap = server.reply<xcb_get_geometry_reply_t>(question.pixmap, deadline);
    const auto client = server.reply<xcb_get_geometry_reply_t>(question.client, deadline);
    const auto top = server.reply<xcb_get_geometry_reply_t>(question.top, deadline);
    const auto place = server.reply<xcb_translate_coordinates_reply_t>(question.place, deadline);
    const auto attributes =
        server.reply<xcb_get_window_attributes_reply_t>(question.attributes, deadline);
    WindowFrame frame;
    frame.frame = extentsOf(takeCardinals(server, question.frame, deadline));
    frame.shadow = extentsOf(takeCardinals(server, question.shadow, deadline));
    const int border = top == nullptr ? 0 : top->border_width;
    auto shape = takeShape(server, question, border, deadline);
    const bool isThere = pixmap != nullptr && client != nullptr && top != nullptr &&
                         place != nullptr && attributes != nullptr;
    if (!isThere) return std::nullopt;
    const RootRect whole{0, 0, pixmap->width, pixmap->height};
    const RootRect inside{place->dst_x + border, place->dst_y + border, client->width,
                          client->height};
    const RootRect seen = intersection(frame.seen(inside), whole);
    const bool isEmpty = seen.width <= 0 || seen.height <= 0;
    return PictureSource{.pixmap = XCB_PIXMAP_NONE,
                         .depth = pixmap->depth,
                         .visual = attributes->visual,
                         .part = isEmpty ? whole : seen,
                         .shape = std::move(shape)};
}

}  // namespace

X11WindowImages::X11WindowImages(RunLoop& runLoop, ServiceConnection& server,
                                 const ClientWindows& clients)
    : runLoop_(runLoop), server_(server), pixmaps_(server, clients), reader_(server) {
    pixmaps_.onHidden([this](xcb_window_t client) {
        hidden_.push_back(client);
        if (nextHidden_ == nullptr)
            nextHidden_ = runLoop_.after(kBetweenHidden, [this] { keepHidden(); });
    });
    listChange_ = clients.onListChange([this](const std::vector<xcb_window_t>&) {
        std::erase_if(last_, [this](const auto& kept) { return !pixmaps_.find(kept.first); });
    });
}

std::optional<Picture> X11WindowImages::capture(WindowNumber number) {
    const auto deadline = deadlineIn(kServerLimit);
    if (pixmaps_.rename(number, deadline)) {
        last_.erase(number);
        return read(number, deadline);
    }
    if (timeLeft(deadline) == Milliseconds::zero()) return std::nullopt;
    // Hidden just now, before its notice was handled.
    keepLast(number, deadline);
    const auto kept = last_.find(number);
    if (kept == last_.end()) return std::nullopt;
    const auto stillThere =
        server_.reply<xcb_get_geometry_reply_t>(xcb_get_geometry(server_.raw(), number), deadline);
    return stillThere == nullptr ? std::nullopt : std::optional(kept->second);
}

void X11WindowImages::keepHidden() {
    const auto client = hidden_.front();
    hidden_.pop_front();
    const auto* pixmap = pixmaps_.find(client);
    // It may be back meanwhile.
    if (pixmap != nullptr && pixmap->isHidden) keepLast(client, deadlineIn(kServerLimit));
    nextHidden_.reset();
    if (!hidden_.empty()) nextHidden_ = runLoop_.after(kBetweenHidden, [this] { keepHidden(); });
}

/// The server would keep all the pixels of the window as long as their name is held.
void X11WindowImages::keepLast(xcb_window_t client, Deadline deadline) {
    auto picture = read(client, deadline);
    pixmaps_.release(client);
    if (picture) last_[client] = *std::move(picture);
}

std::optional<Picture> X11WindowImages::read(xcb_window_t client, Deadline deadline) {
    const auto* pixmap = pixmaps_.find(client);
    if (pixmap == nullptr || pixmap->pixmap == XCB_PIXMAP_NONE) return std::nullopt;
    auto source = take(server_, ask(server_, client, *pixmap), deadline);
    if (!source) return std::nullopt;
    source->pixmap = pixmap->pixmap;
    auto bitmap = reader_.read(*source, deadline);
    if (!bitmap) return std::nullopt;
    const int width = bitmap->width;
    const int height = bitmap->height;
    return Picture{width, height, ++lastSerial_,
                   std::make_shared<const Bitmap>(*std::move(bitmap))};
}

ServiceCheck X11WindowImages::check(ServiceConnection& server) {
    if (!WindowPixmaps::isOffered(server, deadlineIn(kServerLimit)))
        return {"window pictures", false, false,
                "the X server lacks the Composite extension: previews have no picture",
                "switch the extension on in the X server's configuration"};
    if (!PictureReader(server).hasSharedMemory())
        return {"window pictures", true, false,
                "Composite, without shared memory: each picture takes some milliseconds longer",
                "run on the machine of the X server"};
    return {"window pictures", true, false, "Composite and shared memory", {}};
}

}  // namespace orvel::x11
