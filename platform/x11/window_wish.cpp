#include "platform/x11/window_wish.hpp"

namespace orvel::x11 {

namespace {

/// A window manager that has another opinion keeps it.
constexpr int kEnough = 2;

}  // namespace

void WindowWish::moveTo(PixelPlace place) {
    corner_ = wanted_ ? place_ : std::nullopt;
    place_ = place;
    corrections_ = 0;
}

void WindowWish::resizeTo(PixelSize wanted, PixelSize taken, const WindowFrame& frame) {
    corner_.reset();
    wanted_ = wanted;
    taken_ = taken;
    frame_ = frame;
    corrections_ = 0;
}

WindowState WindowWish::applied(WindowState now) const {
    if (leavesMaximized_) now.isMaximized = false;
    if (isMinimized_) now.isMinimized = *isMinimized_;
    RootRect seen = now.seen();
    if (place_) {
        seen.x = place_->x;
        seen.y = place_->y;
    }
    if (wanted_) {
        seen.width = taken_.width;
        seen.height = taken_.height;
    }
    now.client = now.frame.client(seen);
    return now;
}

std::optional<PixelPlace> WindowWish::placeFor(const RootRect& seen) const {
    if (!place_ || !wanted_ || !corner_ || *corner_ == *place_) return place_;
    // It was moved so that the edge on the right stays where the wanted size would have had it:
    // there it belongs with the size that it has in fact.
    const bool isAtRight = place_->x + taken_.width == corner_->x + wanted_->width;
    return isAtRight ? PixelPlace{place_->x + taken_.width - seen.width, place_->y} : place_;
}

std::optional<WindowWish::Correction> WindowWish::correct(const WindowState& now) {
    // The place of a window that is hidden, or about to be, means nothing.
    if (now.isMinimized || isMinimized_.value_or(false) || now.isMaximized) return std::nullopt;
    const RootRect seen = now.seen();
    Correction correction;
    // A size other than the wanted one is what the window manager decided, unless the frame that
    // was reckoned with is another one now.
    const bool hasOtherFrame = !(now.frame == frame_);
    if (wanted_ && hasOtherFrame && PixelSize{seen.width, seen.height} != *wanted_)
        correction.size = wanted_;
    frame_ = now.frame;
    const auto place = placeFor(seen);
    if (place && PixelPlace{seen.x, seen.y} != *place) correction.place = place;
    if ((!correction.place && !correction.size) || corrections_ == kEnough) return std::nullopt;
    ++corrections_;
    return correction;
}

}  // namespace orvel::x11
