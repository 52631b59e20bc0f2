#pragma once

#include "platform/x11/pasteboard_capture.hpp"
#include "platform/x11/pasteboard_state.hpp"
#include "platform/x11/selection_owner.hpp"

#include <xcb/xfixes.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orvel::x11 {

/// Follows the owner of the clipboard and owns it for us, on a thread and a connection of its own:
/// an owner that hangs keeps only this thread waiting.
class PasteboardWorker {
public:
    /// Runs work elsewhere. Any thread.
    using Background = std::function<void(std::function<void()>)>;

    /// Changes are counted from now on.
    PasteboardWorker(std::unique_ptr<ServiceConnection> server,
                     std::shared_ptr<PasteboardState> state, Background background);

    /// Returns when the state says the end, after a clipboard manager took what we own, or when
    /// the server is gone.
    void run();

private:
    void start();
    bool handleNext(Deadline deadline);
    void sleepUntil(Deadline deadline);
    [[nodiscard]] bool goesOn() const;
    void noticed(const xcb_xfixes_selection_notify_event_t& notice);
    void capture();
    void obey();
    void askForTime();
    void takeOver(xcb_timestamp_t time);
    void tookOver();
    void handOver();
    [[nodiscard]] xcb_window_t ownerOf(xcb_atom_t selection, Deadline deadline);
    [[nodiscard]] std::shared_ptr<PendingPicture> decode(std::vector<std::uint8_t> encoded);

    std::unique_ptr<ServiceConnection> server_;
    std::shared_ptr<PasteboardState> state_;
    Background background_;
    xcb_window_t window_;
    xcb_atom_t clipboard_;
    SelectionOwner owner_;
    SelectionReader reader_;
    PasteboardCapture capture_;
    /// Whether the server tells who becomes the owner.
    bool hasNotices_ = false;
    /// What we announced last, and whether others have all of it.
    PasteboardState::Announcement announced_;
    bool isPictureAwaited_ = false;
    /// Take-overs under way: the server has not confirmed them.
    int takeOvers_ = 0;
    /// Somebody else became the owner while one was.
    bool hasIgnored_ = false;
    /// Changes by others that have not been read yet, and since when the last one owns.
    std::int64_t changes_ = 0;
    xcb_timestamp_t changedAt_ = XCB_CURRENT_TIME;
    bool isCaptureDue_ = false;
    /// What is being read is no longer what lies there, or cannot arrive any more.
    bool isReadingVain_ = false;
    std::vector<Subscription> subscriptions_;
};

}  // namespace orvel::x11
