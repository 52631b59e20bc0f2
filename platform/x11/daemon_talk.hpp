#pragma once

#include "platform/x11/bus_peer.hpp"
#include "platform/x11/input_method_board.hpp"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace orvel::x11 {

/// The talk with one input method daemon: questions, of which the board learns when one stays
/// without an answer, and selections, with the count of those that were carried out. Belongs to the
/// thread of the daemons.
class DaemonTalk {
public:
    using Answered = std::function<void(GVariant*)>;

    DaemonTalk(DaemonKind kind, InputMethodBoard& board) : kind_(kind), board_(board) {}

    /// The daemon is to be found there, until `end`. The bus must live longer than that.
    BusPeer& begin(const BusConnection& bus, const char* name, const char* path);
    /// It is gone; what it was asked to do it will not do any more.
    void end();
    [[nodiscard]] bool isOn() const { return peer_ != nullptr; }

    /// `answered` gets null when the daemon refuses, and is not called when it stays silent.
    void ask(const char* interface, const char* method, GVariant* parameters,
             const char* answerType, Answered answered);
    /// It was looked for and is not even to be reached.
    void fallSilent();
    void noteTry() { lastTry_ = std::chrono::steady_clock::now(); }
    [[nodiscard]] bool isAsking() const { return isAsking_; }
    [[nodiscard]] bool isSilent() const { return isSilent_; }
    /// Whether a silent one was left alone for long enough to be asked again.
    [[nodiscard]] bool isDueAgain() const;

    /// Passes a selection on by this method, which is given the name of the engine. `look` asks for
    /// the current one.
    void select(const EngineSelection& selection, const char* interface, const char* method,
                const std::string& engine, const std::function<void()>& look);
    /// How many selections the daemon has carried out or never will.
    [[nodiscard]] std::uint64_t carriedOut() const { return carriedOut_; }
    void countAllAsCarriedOut() { carriedOut_ = asked_; }

private:
    DaemonKind kind_;
    InputMethodBoard& board_;
    std::uint64_t asked_ = 0;
    std::uint64_t carriedOut_ = 0;
    bool isAsking_ = false;
    bool isSilent_ = false;
    std::chrono::steady_clock::time_point lastTry_;
    std::unique_ptr<BusPeer> peer_;
};

}  // namespace orvel::x11
