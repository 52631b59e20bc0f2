#include "platform/memory/memory_status_bar.hpp"

namespace orvel::memory {

void MemoryStatusBar::createItem(const StatusItemSpec& spec,
                                 std::function<void(const StatusItemClick&)> clicked) {
    effects_.effect("statusItem")
        ->beginObject()
        .member("length", spec.length)
        .member("image", spec.image)
        .endObject();
    clicked_ = std::move(clicked);
}

std::optional<ScreenRect> MemoryStatusBar::buttonFrame() const { return world_.statusButton; }

void MemoryStatusBar::click(const StatusItemClick& click) const {
    if (clicked_) clicked_(click);
}

}  // namespace orvel::memory
