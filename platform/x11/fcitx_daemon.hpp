#pragma once

#include "platform/x11/bus_peer.hpp"
#include "platform/x11/input_method_daemon.hpp"
#include "platform/x11/name_watch.hpp"

#include <map>
#include <memory>

namespace orvel::x11 {

/// Fcitx 5: the input methods of its current group. It does not tell when another one is selected,
/// and may keep one for each window, so the current one is asked for before it is needed.
class FcitxDaemon final : public InputMethodDaemon {
public:
    FcitxDaemon(const BusConnection& session, InputMethodBoard& board);

    void select(const EngineSelection& selection) override;
    void refresh() override;

private:
    void appeared();
    void ask(const char* method, GVariant* parameters, const char* answerType,
             std::function<void(GVariant*)> answered);
    void askNames();
    void askGroup();
    void readNames(GVariant* all);
    void readGroup(GVariant* group);
    void askCurrent();

    const BusConnection& session_;
    InputMethodBoard& board_;
    std::map<std::string, InputMethodEngine> known_;
    InputMethodState state_;
    /// Selections that were passed on, and those that the daemon has carried out or never will.
    std::uint64_t asked_ = 0;
    std::uint64_t carriedOut_ = 0;
    bool isAsking_ = false;
    bool isSilent_ = false;
    std::chrono::steady_clock::time_point lastTry_;
    std::unique_ptr<BusPeer> peer_;
    NameWatch watch_;
};

}  // namespace orvel::x11
