#pragma once

#include "platform/x11/daemon_talk.hpp"
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
    DaemonTalk talk_;
    NameWatch watch_;
};

}  // namespace orvel::x11
