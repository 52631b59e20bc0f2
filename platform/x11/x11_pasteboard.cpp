#include "platform/x11/x11_pasteboard.hpp"

#include "platform/x11/pasteboard_worker.hpp"

#include <xcb/xfixes.h>

#include <utility>

namespace orvel::x11 {

namespace {

/// Only a picture of ours that was written this moment is still being decoded.
constexpr Milliseconds kReadLimit{1000};

std::shared_ptr<const PictureForms> readForms(const std::string& path) {
    auto forms = readPictureForms(path);
    return forms ? std::make_shared<const PictureForms>(std::move(forms).value()) : nullptr;
}

}  // namespace

X11Pasteboard::X11Pasteboard(RunLoop& runLoop, const std::string& display) : runLoop_(runLoop) {
    auto server = ServiceConnection::open(display);
    if (!server) {
        problem_ = server.error();
        return;
    }
    const auto background = [&runLoop](std::function<void()> work) {
        runLoop.background(std::move(work));
    };
    thread_ = std::thread([worker = std::make_unique<PasteboardWorker>(
                               std::move(server).value(), state_, background)] { worker->run(); });
}

X11Pasteboard::~X11Pasteboard() {
    state_->announce();
    state_->end();
    if (thread_.joinable()) thread_.join();
}

std::int64_t X11Pasteboard::changeCount() const { return state_->snapshot().changeCount; }

PasteboardMarks X11Pasteboard::marks() const { return state_->snapshot().contents->marks; }

std::optional<std::string> X11Pasteboard::string() const {
    return state_->snapshot().contents->text;
}

std::optional<PasteboardImage> X11Pasteboard::image() const {
    const auto picture = state_->snapshot().contents->picture;
    const auto forms = picture == nullptr ? nullptr : picture->wait(kReadLimit);
    if (forms == nullptr) return std::nullopt;
    return PasteboardImage{.picture = {forms->pixelWidth, forms->pixelHeight, 0, nullptr},
                           .tiff = forms->tiff};
}

void X11Pasteboard::clear() {
    state_->begin();
    announceSoon();
}

void X11Pasteboard::setString(std::string_view text) {
    state_->amend([text](PasteboardContents& contents) { contents.text = std::string(text); });
    announceSoon();
}

Result<> X11Pasteboard::writeImage(std::string_view path) {
    const std::string file(path);
    if (!isPictureFile(file)) return Failure{"no picture in " + file};
    const auto picture = std::make_shared<PendingPicture>(PasteboardState::waker(state_));
    runLoop_.background([picture, file] { picture->settle(readForms(file)); });
    state_->amend([&picture](PasteboardContents& contents) { contents.picture = picture; });
    announceSoon();
    return {};
}

/// Clearing and writing are one change to others.
void X11Pasteboard::announceSoon() {
    if (std::exchange(isAnnouncing_, true)) return;
    runLoop_.post([this, isAlive = std::weak_ptr(isAlive_)] {
        if (isAlive.expired()) return;
        isAnnouncing_ = false;
        state_->announce();
    });
}

ServiceCheck X11Pasteboard::check(ServiceConnection& server) const {
    ServiceCheck check;
    check.name = "clipboard";
    if (!problem_.empty()) {
        check.finding = problem_ + ": nothing that is copied is noticed";
        check.remedy = "close programs until the X server accepts another connection";
    } else if (!server.extensionEvents(xcb_xfixes_id)) {
        check.finding = "the X server lacks XFixes: nothing that others copy is noticed";
        check.remedy = "use an X server with the XFIXES extension";
    } else {
        check.isOk = true;
        const auto manager = server.reply<xcb_get_selection_owner_reply_t>(
            xcb_get_selection_owner(server.raw(), server.atom("CLIPBOARD_MANAGER")));
        const bool isKept = manager != nullptr && manager->owner != XCB_WINDOW_NONE;
        check.finding = isKept ? "changes are noticed, a clipboard manager keeps what we write"
                               : "changes are noticed; what Orvel writes lasts until it ends";
    }
    return check;
}

}  // namespace orvel::x11
