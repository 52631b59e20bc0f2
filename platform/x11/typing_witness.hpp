#pragma once

#include "platform/base/result.hpp"
#include "platform/base/typed_secrecy.hpp"
#include "platform/event_tap.hpp"
#include "platform/x11/accessible_focus.hpp"
#include "platform/x11/x11_session.hpp"

#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <string>

namespace orvel::x11 {

class TypingCourt;

/// Finds out where what is typed goes. Every moment of input gets a mark in the stream of the
/// session's own requests, before its keys and behind them. A thread with a connection of its own
/// learns from the marks which window got the keys and whether another client held the keyboard.
/// Then it waits until the application has handled the keys and asks it which of its fields had
/// the keyboard meanwhile. Neither the keys nor this class's callers ever wait for that.
///
/// Open is what was typed into an application that tells its focus, while only fields that are no
/// password fields had it, and what was typed into an application that tells nothing at all.
class TypingWitness final : public TypedSecrecy {
public:
    /// `keys` is the connection by which keys leave.
    [[nodiscard]] static Result<std::unique_ptr<TypingWitness>> start(
        X11Session& keys, AccessibleFocus& focus, const std::string& display = {});
    ~TypingWitness() override;
    TypingWitness(const TypingWitness&) = delete;
    TypingWitness& operator=(const TypingWitness&) = delete;

    /// `told` is called on a thread of this object whenever something was decided.
    void onDecided(std::function<void()> told);
    /// Begins a moment of input, unless one is under way. Before any of its keys leave.
    void beginMoment();
    /// Ends the moment when its keys have left.
    void endMoment();
    /// Waits until everything typed is decided, or the limit has passed.
    void settle(std::chrono::milliseconds limit);

    [[nodiscard]] InputTicket current() const override { return current_; }
    [[nodiscard]] Secrecy of(InputTicket ticket) const override;

private:
    TypingWitness(X11Session& keys, std::unique_ptr<TypingCourt> court);
    void mark(bool isEnd);
    void askForGrab();
    void takeGrabAnswers();

    X11Session& keys_;
    std::unique_ptr<TypingCourt> court_;
    InputTicket current_ = 0;
    bool isUnderWay_ = false;
    struct GrabQuestion {
        InputTicket ticket;
        unsigned request;
    };
    std::deque<GrabQuestion> grabQuestions_;
};

/// The tap, with a moment begun before each event is decided.
class WitnessedTap final : public EventTap {
public:
    WitnessedTap(EventTap& tap, TypingWitness& witness) : tap_(tap), witness_(witness) {}

    [[nodiscard]] bool create(const EventTapRequest& request, EventHandler handler) override;
    void enable() override { tap_.enable(); }
    [[nodiscard]] bool exists() const override { return tap_.exists(); }
    [[nodiscard]] bool isEnabled() const override { return tap_.isEnabled(); }

private:
    EventTap& tap_;
    TypingWitness& witness_;
};

}  // namespace orvel::x11
