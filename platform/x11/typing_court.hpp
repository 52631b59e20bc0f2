#pragma once

#include "platform/base/typed_secrecy.hpp"
#include "platform/x11/keyboard_target.hpp"
#include "platform/x11/typing_judge.hpp"
#include "platform/x11/wake_signal.hpp"
#include "platform/x11/window_ping.hpp"

#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace orvel::x11 {

/// The first of the five numbers of a mark; the others are the ticket and what had been told of
/// the focus, in halves.
enum class MarkKind : std::uint32_t { begin = 1, end = 2 };

/// The thread that decides about moments of input. `of`, `setHeld` and `settle` from any thread.
class TypingCourt {
public:
    TypingCourt(std::unique_ptr<ServiceConnection> server, AccessibleFocus& focus);
    ~TypingCourt();
    TypingCourt(const TypingCourt&) = delete;
    TypingCourt& operator=(const TypingCourt&) = delete;

    /// `told` is called on this object's thread whenever something was decided.
    void onDecided(std::function<void()> told);
    /// Gets the marks; not shown, so that a grab for it never succeeds.
    [[nodiscard]] xcb_window_t window() const { return window_; }
    [[nodiscard]] AccessibleFocus::Moment told() const { return focus_.now(); }

    /// Whether another client held the keyboard when the moment began.
    void setHeld(InputTicket ticket, bool isHeld);
    [[nodiscard]] Secrecy of(InputTicket ticket) const;
    /// Waits until everything up to `last` is decided, or the limit has passed.
    void settle(InputTicket last, Milliseconds limit);

private:
    using Tickets = std::vector<InputTicket>;

    struct Moment {
        AccessibleFocus::Moment told = 0;
        xcb_window_t window = kNoWindow;  ///< none: not known for sure
        unsigned change = 0;
        bool hasEnded = false;
        bool isInCourt = false;
        Deadline due{};
    };
    struct Question {
        Tickets tickets;
        WindowPing::Number ping = 0;
        Deadline end{};
    };

    void run();
    void waitForWork();
    void marked(const xcb_generic_event_t& event);
    void seeTarget();
    void judge();
    [[nodiscard]] std::map<xcb_window_t, Tickets> takeDueMoments();
    void endLateQuestions();
    [[nodiscard]] std::optional<bool> heldAt(InputTicket ticket) const;
    void openCase(xcb_window_t window, const Tickets& tickets);
    void openCaseOfTeller(xcb_window_t window, const Tickets& tickets);
    void closeCases();
    void closeCase(xcb_window_t window, const Tickets& tickets);
    void decide(InputTicket ticket, bool isOpen);
    void refuse(const Tickets& tickets);
    void tellDecided();
    void putOff(const Tickets& tickets, Deadline due);
    void wakeAt(Deadline deadline);

    std::unique_ptr<ServiceConnection> server_;
    AccessibleFocus& focus_;
    xcb_window_t window_;
    WakeSignal wake_;
    KeyboardTarget target_;
    TypingJudge judge_;
    WindowPing ping_;
    Subscription marks_;
    std::map<InputTicket, Moment> moments_;
    std::map<xcb_window_t, Question> questions_;
    std::vector<WindowPing::Number> answers_;
    unsigned seenChange_ = ~0U;
    bool wasPresent_ = false;
    bool hasMore_ = false;
    bool hasDecided_ = false;
    Deadline wakeAt_{};

    mutable std::mutex mutex_;
    std::condition_variable changed_;
    bool isEnding_ = false;
    std::function<void()> decided_;
    std::map<InputTicket, bool> held_;
    InputTicket firstVerdict_ = 1;
    std::deque<Secrecy> verdicts_;
    std::thread thread_;
};

}  // namespace orvel::x11
