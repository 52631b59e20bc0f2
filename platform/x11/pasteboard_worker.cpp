#include "platform/x11/pasteboard_worker.hpp"

#include "platform/x11/pasteboard_forms.hpp"

#include <algorithm>
#include <array>
#include <poll.h>
#include <span>
#include <utility>

namespace orvel::x11 {

namespace {

/// How often stalled requestors are looked for while something is being sent.
constexpr Milliseconds kStallLook{1000};
/// How long the end of the program may wait for a clipboard manager.
constexpr Milliseconds kHandOverLimit{700};
/// Who owns the clipboard must be known before anything else is done, however busy the server is.
constexpr Milliseconds kOwnerLimit{10'000};
/// How long decoding a picture may hold up the news that something was copied.
constexpr Milliseconds kDecodeLimit{10'000};
constexpr const char* kTimeProperty = "_ORVEL_TIME";
constexpr const char* kSaveProperty = "_ORVEL_SAVE";

}  // namespace

PasteboardWorker::PasteboardWorker(std::unique_ptr<ServiceConnection> server,
                                   std::shared_ptr<PasteboardState> state, Background background)
    : server_(std::move(server)),
      state_(std::move(state)),
      background_(std::move(background)),
      window_(server_->createHiddenWindow()),
      clipboard_(server_->atom("CLIPBOARD")),
      owner_(*server_, window_, clipboard_),
      reader_(*server_, window_, [this](Deadline deadline) { return handleNext(deadline); }),
      capture_(*server_, reader_,
               [this](std::vector<std::uint8_t> encoded) { return decode(std::move(encoded)); }) {
    start();
}

void PasteboardWorker::run() {
    while (goesOn()) {
        if (isCaptureDue_) {
            capture();
        } else {
            handleNext(Deadline::max());
        }
    }
    if (server_->isAlive()) handOver();
}

void PasteboardWorker::start() {
    server_->setHooks([this] { state_->wake().set(); }, nullptr);
    server_->selectEvents(window_, XCB_EVENT_MASK_PROPERTY_CHANGE);
    subscriptions_.push_back(
        server_->onEvent(XCB_PROPERTY_NOTIFY, [this](const xcb_generic_event_t& event) {
            const auto& notice = reinterpret_cast<const xcb_property_notify_event_t&>(event);
            if (notice.window == window_ && notice.atom == server_->atom(kTimeProperty))
                takeOver(notice.time);
        }));
    subscriptions_.push_back(
        server_->onEvent(XCB_SELECTION_CLEAR, [this](const xcb_generic_event_t&) {
            if (takeOvers_ == 0) owner_.withdraw();
        }));
    const auto xfixes = server_->extensionEvents(xcb_xfixes_id);
    hasNotices_ = xfixes.has_value();
    if (!hasNotices_) return;
    static_cast<void>(server_->reply<xcb_xfixes_query_version_reply_t>(
        xcb_xfixes_query_version(server_->raw(), 5, 0)));
    subscriptions_.push_back(server_->onEvent(
        static_cast<std::uint8_t>(*xfixes + XCB_XFIXES_SELECTION_NOTIFY),
        [this](const xcb_generic_event_t& event) {
            noticed(reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event));
        }));
    xcb_xfixes_select_selection_input(server_->raw(), window_, clipboard_,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    // What lies there already is no change.
    isCaptureDue_ = ownerOf(clipboard_, deadlineIn(kServerLimit)) != XCB_WINDOW_NONE;
}

bool PasteboardWorker::goesOn() const { return !state_->isEnding() && server_->isAlive(); }

/// Handles what has arrived, or waits for it; false when a reader need not wait any longer.
bool PasteboardWorker::handleNext(Deadline deadline) {
    if (!server_->waitForEvent(std::chrono::steady_clock::now())) sleepUntil(deadline);
    state_->wake().clear();
    obey();
    server_->dispatch();
    owner_.dropStalled();
    return goesOn() && !isReadingVain_ && std::chrono::steady_clock::now() < deadline;
}

void PasteboardWorker::sleepUntil(Deadline deadline) {
    if (owner_.isSending()) deadline = std::min(deadline, deadlineIn(kStallLook));
    const int limit =
        deadline == Deadline::max() ? -1 : static_cast<int>(timeLeft(deadline).count());
    std::array waits{pollfd{server_->fd(), POLLIN, 0}, pollfd{state_->wake().fd(), POLLIN, 0}};
    ::poll(waits.data(), waits.size(), limit);
}

void PasteboardWorker::noticed(const xcb_xfixes_selection_notify_event_t& notice) {
    if (notice.selection != clipboard_) return;
    if (notice.subtype != XCB_XFIXES_SELECTION_EVENT_SET_SELECTION_OWNER) {
        isReadingVain_ = true;
    } else if (notice.owner == window_) {
        tookOver();
    } else {
        changedAt_ = notice.selection_timestamp;
        // Ours is on its way and comes after it.
        hasIgnored_ = takeOvers_ > 0;
        if (hasIgnored_) return;
        ++changes_;
        isCaptureDue_ = true;
        isReadingVain_ = true;
    }
}

/// Whoever made the reading vain by new contents has made another one due.
void PasteboardWorker::capture() {
    isCaptureDue_ = false;
    isReadingVain_ = false;
    auto contents = capture_.capture(changedAt_);
    const auto limit = deadlineIn(kDecodeLimit);
    while (contents.picture != nullptr && !contents.picture->isSettled() && !isCaptureDue_) {
        isReadingVain_ = false;
        if (!handleNext(limit) && !isReadingVain_) break;
    }
    if (isCaptureDue_ || takeOvers_ > 0 || owner_.isOffering()) return;
    state_->settle(std::move(contents), std::exchange(changes_, 0), announced_.number);
}

void PasteboardWorker::obey() {
    auto newest = state_->announcement();
    if (newest.number != announced_.number) {
        announced_ = std::move(newest);
        askForTime();
    }
    const auto& picture = announced_.contents != nullptr ? announced_.contents->picture : nullptr;
    if (!isPictureAwaited_ || picture == nullptr || !picture->isSettled()) return;
    isPictureAwaited_ = false;
    owner_.update(formsOf(announced_.contents));
}

/// Ownership begins at a moment of the server, which an empty change of a property tells.
void PasteboardWorker::askForTime() {
    ++takeOvers_;
    xcb_change_property(server_->raw(), XCB_PROP_MODE_APPEND, window_, server_->atom(kTimeProperty),
                        XCB_ATOM_INTEGER, 32, 0, nullptr);
    server_->flush();
}

void PasteboardWorker::takeOver(xcb_timestamp_t time) {
    owner_.offer(formsOf(announced_.contents), time);
    isPictureAwaited_ =
        announced_.contents->picture != nullptr && !announced_.contents->picture->isSettled();
    xcb_set_selection_owner(server_->raw(), window_, clipboard_, time);
    if (ownerOf(clipboard_, deadlineIn(kOwnerLimit)) == window_) {
        if (!hasNotices_) tookOver();
        return;
    }
    // Somebody else was later; what they own counts.
    --takeOvers_;
    owner_.withdraw();
    if (!std::exchange(hasIgnored_, false)) return;
    ++changes_;
    isCaptureDue_ = true;
}

void PasteboardWorker::tookOver() {
    takeOvers_ = std::max(takeOvers_ - 1, 0);
    hasIgnored_ = false;
    changes_ = 0;
    isCaptureDue_ = false;
    isReadingVain_ = true;
}

/// Asks the clipboard manager, if there is one, to keep what would end with us.
void PasteboardWorker::handOver() {
    const auto limit = deadlineIn(kHandOverLimit);
    obey();
    while (takeOvers_ > 0 && server_->isAlive() && timeLeft(limit) > Milliseconds::zero())
        handleNext(limit);
    const auto manager = server_->atom("CLIPBOARD_MANAGER");
    const auto targets = owner_.contentTargets();
    if (!owner_.isOffering() || targets.empty() || ownerOf(manager, limit) == XCB_WINDOW_NONE)
        return;
    bool isDone = false;
    const auto answered =
        server_->onEvent(XCB_SELECTION_NOTIFY, [&](const xcb_generic_event_t& event) {
            const auto& notice = reinterpret_cast<const xcb_selection_notify_event_t&>(event);
            isDone = isDone || notice.selection == manager;
        });
    const auto property = server_->atom(kSaveProperty);
    xcb_change_property(server_->raw(), XCB_PROP_MODE_REPLACE, window_, property, XCB_ATOM_ATOM, 32,
                        static_cast<std::uint32_t>(targets.size()), targets.data());
    xcb_convert_selection(server_->raw(), window_, manager, server_->atom("SAVE_TARGETS"), property,
                          owner_.since());
    while (!isDone && server_->isAlive() && timeLeft(limit) > Milliseconds::zero())
        handleNext(limit);
}

xcb_window_t PasteboardWorker::ownerOf(xcb_atom_t selection, Deadline deadline) {
    const auto owner = server_->reply<xcb_get_selection_owner_reply_t>(
        xcb_get_selection_owner(server_->raw(), selection), deadline);
    return owner == nullptr ? static_cast<xcb_window_t>(XCB_WINDOW_NONE) : owner->owner;
}

std::shared_ptr<PendingPicture> PasteboardWorker::decode(std::vector<std::uint8_t> encoded) {
    auto picture = std::make_shared<PendingPicture>(PasteboardState::waker(state_));
    const auto source = std::make_shared<std::vector<std::uint8_t>>(std::move(encoded));
    background_([picture, source] {
        auto tiff = toTiff(std::as_bytes(std::span(*source)));
        if (!tiff) return picture->settle(nullptr);
        auto image = std::move(tiff).value();
        picture->settle(std::make_shared<const PictureForms>(
            PictureForms{image.pixelWidth, image.pixelHeight, std::move(image.bytes), {}}));
    });
    return picture;
}

}  // namespace orvel::x11
