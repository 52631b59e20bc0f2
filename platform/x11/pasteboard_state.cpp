#include "platform/x11/pasteboard_state.hpp"

#include <utility>

namespace orvel::x11 {

PasteboardState::Snapshot PasteboardState::snapshot() const {
    const std::lock_guard lock(mutex_);
    return current_;
}

void PasteboardState::begin() {
    const std::lock_guard lock(mutex_);
    beginLocked();
}

void PasteboardState::beginLocked() {
    ++current_.changeCount;
    current_.contents = std::make_shared<PasteboardContents>();
    isOurs_ = true;
    ++written_;
}

void PasteboardState::amend(const std::function<void(PasteboardContents&)>& change) {
    const std::lock_guard lock(mutex_);
    if (!isOurs_) beginLocked();
    auto changed = std::make_shared<PasteboardContents>(*current_.contents);
    change(*changed);
    current_.contents = std::move(changed);
    ++written_;
}

void PasteboardState::announce() {
    {
        const std::lock_guard lock(mutex_);
        if (announced_.number == written_) return;
        announced_ = {written_, current_.contents};
    }
    wake_.set();
}

void PasteboardState::end() {
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
    }
    wake_.set();
}

PasteboardState::Announcement PasteboardState::announcement() const {
    const std::lock_guard lock(mutex_);
    return announced_;
}

bool PasteboardState::isEnding() const {
    const std::lock_guard lock(mutex_);
    return isEnding_;
}

std::function<void()> PasteboardState::waker(const std::shared_ptr<PasteboardState>& state) {
    return [weak = std::weak_ptr(state)] {
        if (const auto alive = weak.lock()) alive->wake().set();
    };
}

void PasteboardState::settle(PasteboardContents contents, std::int64_t changes,
                             std::uint64_t number) {
    const std::lock_guard lock(mutex_);
    if (written_ != number) return;
    current_.changeCount += changes;
    current_.contents = std::make_shared<PasteboardContents>(std::move(contents));
    isOurs_ = false;
}

}  // namespace orvel::x11
