#include "platform/x11/typing_court.hpp"

#include <algorithm>
#include <poll.h>
#include <utility>

namespace orvel::x11 {

namespace {

using std::chrono::steady_clock;

/// Some applications tell where the focus went a moment after they have handled the key: what is
/// typed is judged so long after it was.
constexpr Milliseconds kTimeToTell{150};
constexpr Milliseconds kTimeToConnect{100};
/// An application that hangs longer than that is not waited for.
constexpr Milliseconds kTimeToAnswer{5000};
constexpr Milliseconds kTimeToAskKinds{300};
constexpr Milliseconds kForever{60'000};
/// Moments that are remembered; earlier ones count as secret.
constexpr std::size_t kMostVerdicts = 20'000;

std::uint64_t wholeOf(std::uint32_t low, std::uint32_t high) {
    return static_cast<std::uint64_t>(high) << 32U | low;
}

}  // namespace

TypingCourt::TypingCourt(std::unique_ptr<ServiceConnection> server, AccessibleFocus& focus)
    : server_(std::move(server)),
      focus_(focus),
      window_(server_->createHiddenWindow()),
      target_(*server_),
      judge_(*server_, focus),
      ping_(*server_, [this](WindowPing::Number number) { answers_.push_back(number); }) {
    marks_ = server_->onEvent(XCB_CLIENT_MESSAGE,
                              [this](const xcb_generic_event_t& event) { marked(event); });
    server_->setHooks([this] { hasMore_ = true; }, nullptr);
    focus_.onChange([this] { wake_.set(); });
    // The first moment meets a window that is known.
    target_.update();
    seeTarget();
    thread_ = std::thread([this] { run(); });
}

TypingCourt::~TypingCourt() {
    focus_.onChange(nullptr);
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
    }
    wake_.set();
    thread_.join();
}

void TypingCourt::wakeAt(Deadline deadline) { wakeAt_ = std::min(wakeAt_, deadline); }

void TypingCourt::waitForWork() {
    server_->flush();
    const bool isAlive = server_->isAlive();
    if (std::exchange(hasMore_, false) && isAlive) return;
    pollfd entries[] = {{wake_.fd(), POLLIN, 0}, {server_->fd(), POLLIN, 0}};
    ::poll(entries, isAlive ? 2 : 1, static_cast<int>(timeLeft(wakeAt_).count()));
    wake_.clear();
}

void TypingCourt::run() {
    for (;;) {
        waitForWork();
        {
            const std::lock_guard lock(mutex_);
            if (isEnding_) return;
        }
        wakeAt_ = deadlineIn(kForever);
        server_->dispatch();
        target_.update();
        seeTarget();
        focus_.askKinds(deadlineIn(kTimeToAskKinds));
        closeCases();
        judge();
        tellDecided();
    }
}

void TypingCourt::marked(const xcb_generic_event_t& event) {
    const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
    if (message.window != window_) return;
    const auto* data = message.data.data32;
    const InputTicket ticket = wholeOf(data[1], data[2]);
    if (data[0] == static_cast<std::uint32_t>(MarkKind::begin)) {
        moments_[ticket] = {.told = wholeOf(data[3], data[4]),
                            .window = target_.windowAt(event),
                            .change = target_.changes()};
        return;
    }
    const auto moment = moments_.find(ticket);
    if (moment == moments_.end()) return;
    const bool isSame = target_.windowAt(event) == moment->second.window &&
                        target_.changes() == moment->second.change;
    if (!isSame) moment->second.window = kNoWindow;
    moment->second.hasEnded = true;
    moment->second.due = deadlineIn(kTimeToTell);
}

void TypingCourt::seeTarget() {
    const xcb_window_t window = target_.window();
    const bool isPresent = focus_.presence() == AccessibleFocus::Presence::present;
    const bool isNews = target_.changes() != seenChange_ || isPresent != wasPresent_;
    if (window == kNoWindow || !isNews) return;
    seenChange_ = target_.changes();
    wasPresent_ = isPresent;
    judge_.see(window);
    // Asked before anything is typed, so that it is known by then what has the keyboard.
    if (isPresent && !questions_.contains(window) &&
        judge_.tellerOf(window) == TypingJudge::Teller::telling)
        openCaseOfTeller(window, {});
}

std::optional<bool> TypingCourt::heldAt(InputTicket ticket) const {
    const std::lock_guard lock(mutex_);
    const auto held = held_.find(ticket);
    return held == held_.end() ? std::nullopt : std::optional(held->second);
}

std::map<xcb_window_t, TypingCourt::Tickets> TypingCourt::takeDueMoments() {
    std::map<xcb_window_t, Tickets> due;
    Tickets refused;
    const auto now = steady_clock::now();
    for (auto& [ticket, moment] : moments_) {
        const auto isHeld = heldAt(ticket);
        if (!moment.hasEnded || moment.isInCourt || !isHeld) continue;
        if (*isHeld || moment.window == kNoWindow) {
            refused.push_back(ticket);
        } else if (questions_.contains(moment.window)) {
            continue;  // The one who is asked is asked again after that.
        } else if (moment.due > now) {
            wakeAt(moment.due);
        } else {
            moment.isInCourt = true;
            due[moment.window].push_back(ticket);
        }
    }
    refuse(refused);
    return due;
}

void TypingCourt::endLateQuestions() {
    const auto now = steady_clock::now();
    for (auto question = questions_.begin(); question != questions_.end();) {
        if (question->second.end > now) {
            wakeAt(question->second.end);
            ++question;
            continue;
        }
        refuse(question->second.tickets);
        question = questions_.erase(question);
    }
}

void TypingCourt::judge() {
    endLateQuestions();
    for (const auto& [window, tickets] : takeDueMoments()) openCase(window, tickets);
}

void TypingCourt::openCase(xcb_window_t window, const Tickets& tickets) {
    const auto presence = focus_.presence();
    if (presence == AccessibleFocus::Presence::looking)
        return putOff(tickets, deadlineIn(kTimeToConnect));
    if (presence == AccessibleFocus::Presence::absent) {
        for (const InputTicket ticket : tickets)
            decide(ticket, moments_[ticket].told >= focus_.lostSince());
        return;
    }
    switch (judge_.tellerOf(window)) {
        case TypingJudge::Teller::telling: return openCaseOfTeller(window, tickets);
        case TypingJudge::Teller::silent:
            for (const InputTicket ticket : tickets)
                decide(ticket, judge_.isOpenInSilence(moments_[ticket].told));
            return;
        case TypingJudge::Teller::notKnown: break;
    }
    const auto later = judge_.silentFrom(window);
    later ? putOff(tickets, std::max(*later, deadlineIn(kTimeToConnect))) : refuse(tickets);
}

void TypingCourt::openCaseOfTeller(xcb_window_t window, const Tickets& tickets) {
    WindowPing::Number number = 0;
    switch (ping_.send(window, number)) {
        case WindowPing::Sent::yes:
            questions_[window] = {tickets, number, deadlineIn(kTimeToAnswer)};
            return wakeAt(questions_[window].end);
        // What it had to handle it has handled, since it is gone.
        case WindowPing::Sent::windowGone: return closeCase(window, tickets);
        case WindowPing::Sent::notUnderstood: return refuse(tickets);
    }
}

void TypingCourt::closeCases() {
    for (const WindowPing::Number number : std::exchange(answers_, {})) {
        const auto question =
            std::find_if(questions_.begin(), questions_.end(),
                         [number](const auto& each) { return each.second.ping == number; });
        if (question == questions_.end()) continue;
        const auto [window, asked] = *question;
        questions_.erase(question);
        closeCase(window, asked.tickets);
    }
}

void TypingCourt::closeCase(xcb_window_t window, const Tickets& tickets) {
    const bool isKnown = judge_.ask(window);
    for (const InputTicket ticket : tickets)
        decide(ticket, isKnown && judge_.isOpen(window, moments_[ticket].told));
}

void TypingCourt::putOff(const Tickets& tickets, Deadline due) {
    for (const InputTicket ticket : tickets) {
        moments_[ticket].isInCourt = false;
        moments_[ticket].due = due;
    }
    wakeAt(due);
}

void TypingCourt::refuse(const Tickets& tickets) {
    for (const InputTicket ticket : tickets) decide(ticket, false);
}

void TypingCourt::decide(InputTicket ticket, bool isOpen) {
    moments_.erase(ticket);
    hasDecided_ = true;
    const std::lock_guard lock(mutex_);
    held_.erase(ticket);
    if (ticket < firstVerdict_) return;
    const auto index = static_cast<std::size_t>(ticket - firstVerdict_);
    if (index >= verdicts_.size()) verdicts_.resize(index + 1, Secrecy::undecided);
    verdicts_[index] = isOpen ? Secrecy::open : Secrecy::secret;
    for (; verdicts_.size() > kMostVerdicts; ++firstVerdict_) verdicts_.pop_front();
}

void TypingCourt::tellDecided() {
    if (!std::exchange(hasDecided_, false)) return;
    changed_.notify_all();
    const std::lock_guard lock(mutex_);
    if (decided_) decided_();
}

void TypingCourt::onDecided(std::function<void()> told) {
    const std::lock_guard lock(mutex_);
    decided_ = std::move(told);
}

void TypingCourt::setHeld(InputTicket ticket, bool isHeld) {
    {
        const std::lock_guard lock(mutex_);
        held_[ticket] = isHeld;
    }
    wake_.set();
}

Secrecy TypingCourt::of(InputTicket ticket) const {
    const std::lock_guard lock(mutex_);
    // What this program itself said before anything was typed.
    if (ticket == 0) return Secrecy::open;
    if (ticket < firstVerdict_) return Secrecy::secret;
    const auto index = static_cast<std::size_t>(ticket - firstVerdict_);
    return index < verdicts_.size() ? verdicts_[index] : Secrecy::undecided;
}

void TypingCourt::settle(InputTicket last, Milliseconds limit) {
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, limit, [&] {
        const auto count = last < firstVerdict_ ? 0 : last - firstVerdict_ + 1;
        return verdicts_.size() >= count &&
               std::find(verdicts_.begin(), verdicts_.end(), Secrecy::undecided) == verdicts_.end();
    });
}

}  // namespace orvel::x11
