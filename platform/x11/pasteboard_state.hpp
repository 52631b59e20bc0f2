#pragma once

#include "platform/x11/pasteboard_contents.hpp"
#include "platform/x11/wake_signal.hpp"

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>

namespace orvel::x11 {

/// What the main thread and the thread that talks to the X server share. What the main thread
/// writes holds at once; what others copied holds when it has been read. Any thread.
class PasteboardState {
public:
    using Contents = std::shared_ptr<const PasteboardContents>;

    struct Snapshot {
        std::int64_t changeCount = 0;
        Contents contents = std::make_shared<PasteboardContents>();
    };
    [[nodiscard]] Snapshot snapshot() const;

    /// Our own new contents, empty at first; nobody else hears of them yet.
    void begin();
    /// Adds to our own contents; begins new ones when somebody else's lie there.
    void amend(const std::function<void(PasteboardContents&)>& change);
    /// Lets others have what was written until now.
    void announce();
    /// Ends the other thread.
    void end();

    struct Announcement {
        std::uint64_t number = 0;
        Contents contents;
    };
    /// The newest announcement; number 0 when there was none.
    [[nodiscard]] Announcement announcement() const;
    [[nodiscard]] bool isEnding() const;
    /// What others copied, `changes` times. Ignored when we wrote something since announcement
    /// `number`: ours is newer then.
    void settle(PasteboardContents contents, std::int64_t changes, std::uint64_t number);

    [[nodiscard]] WakeSignal& wake() { return wake_; }
    /// Wakes the other thread. Does not keep the state alive, which itself keeps pictures that
    /// hold this.
    [[nodiscard]] static std::function<void()> waker(const std::shared_ptr<PasteboardState>& state);

private:
    void beginLocked();

    mutable std::mutex mutex_;
    Snapshot current_;
    bool isOurs_ = false;
    std::uint64_t written_ = 0;
    Announcement announced_;
    bool isEnding_ = false;
    WakeSignal wake_;
};

}  // namespace orvel::x11
