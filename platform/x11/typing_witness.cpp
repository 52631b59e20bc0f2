#include "platform/x11/typing_witness.hpp"

#include "platform/x11/typing_court.hpp"

#include <X11/Xlib-xcb.h>
#include <X11/Xlib.h>
#include <xcb/xcb.h>
#include <xcb/xcbext.h>

#include <cstdlib>
#include <utility>

namespace orvel::x11 {

namespace {

long lowOf(std::uint64_t number) { return static_cast<long>(number & 0xFFFFFFFFU); }
long highOf(std::uint64_t number) { return static_cast<long>(number >> 32U); }

}  // namespace

Result<std::unique_ptr<TypingWitness>> TypingWitness::start(X11Session& keys,
                                                            AccessibleFocus& focus,
                                                            const std::string& display) {
    auto server = ServiceConnection::open(display);
    if (!server) return Failure{server.error()};
    auto court = std::make_unique<TypingCourt>(std::move(server).value(), focus);
    return std::unique_ptr<TypingWitness>(new TypingWitness(keys, std::move(court)));
}

TypingWitness::TypingWitness(X11Session& keys, std::unique_ptr<TypingCourt> court)
    : keys_(keys), court_(std::move(court)) {}

TypingWitness::~TypingWitness() = default;

void TypingWitness::onDecided(std::function<void()> told) { court_->onDecided(std::move(told)); }

Secrecy TypingWitness::of(InputTicket ticket) const { return court_->of(ticket); }

void TypingWitness::beginMoment() {
    if (isUnderWay_ || !keys_.isAlive()) return;
    isUnderWay_ = true;
    ++current_;
    mark(false);
    askForGrab();
}

void TypingWitness::endMoment() {
    if (!keys_.isAlive()) return;
    takeGrabAnswers();
    if (!std::exchange(isUnderWay_, false)) return;
    mark(true);
    XFlush(keys_.display());
}

void TypingWitness::settle(std::chrono::milliseconds limit) {
    endMoment();
    if (keys_.isAlive()) XSync(keys_.display(), False);
    takeGrabAnswers();
    court_->settle(current_, limit);
}

void TypingWitness::mark(bool isEnd) {
    const std::uint64_t told = court_->told();
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = court_->window();
    event.xclient.message_type = keys_.atom("_ORVEL_MARK");
    event.xclient.format = 32;
    event.xclient.data.l[0] = static_cast<long>(isEnd ? MarkKind::end : MarkKind::begin);
    event.xclient.data.l[1] = lowOf(current_);
    event.xclient.data.l[2] = highOf(current_);
    event.xclient.data.l[3] = lowOf(told);
    event.xclient.data.l[4] = highOf(told);
    XSendEvent(keys_.display(), court_->window(), False, NoEventMask, &event);
}

void TypingWitness::askForGrab() {
    // A grab for a window that is not shown never succeeds. Only the reason differs: whether
    // another client has the keyboard is looked at first. The answer is read when it is there.
    const auto question =
        xcb_grab_keyboard(XGetXCBConnection(keys_.display()), 0, court_->window(), XCB_CURRENT_TIME,
                          XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    grabQuestions_.push_back({current_, question.sequence});
}

void TypingWitness::takeGrabAnswers() {
    while (!grabQuestions_.empty()) {
        const GrabQuestion question = grabQuestions_.front();
        void* answer = nullptr;
        xcb_generic_error_t* error = nullptr;
        if (xcb_poll_for_reply(XGetXCBConnection(keys_.display()), question.request, &answer,
                               &error) == 0)
            return;
        grabQuestions_.pop_front();
        const Reply<xcb_grab_keyboard_reply_t> reply(
            static_cast<xcb_grab_keyboard_reply_t*>(answer));
        const Reply<xcb_generic_error_t> problem(error);
        const bool isFree = reply != nullptr && reply->status == XCB_GRAB_STATUS_NOT_VIEWABLE;
        court_->setHeld(question.ticket, !isFree);
    }
}

bool WitnessedTap::create(const EventTapRequest& request, EventHandler handler) {
    return tap_.create(request, [this, decide = std::move(handler)](Event& event) {
        witness_.beginMoment();
        return decide(event);
    });
}

}  // namespace orvel::x11
