#include "platform/x11/daemon_talk.hpp"

#include "platform/x11/input_method_daemon.hpp"

#include <utility>

namespace orvel::x11 {

BusPeer& DaemonTalk::begin(const BusConnection& bus, const char* name, const char* path) {
    isAsking_ = false;
    peer_ = std::make_unique<BusPeer>(bus, name, path);
    return *peer_;
}

void DaemonTalk::end() {
    peer_.reset();
    countAllAsCarriedOut();
}

void DaemonTalk::ask(const char* interface, const char* method, GVariant* parameters,
                     const char* answerType, Answered answered) {
    isAsking_ = true;
    noteTry();
    peer_->call(interface, method, parameters, answerType, kDaemonLimit,
                [this, answered = std::move(answered)](const BusAnswer& answer) {
                    isAsking_ = false;
                    if (!answer.isAnswered) return fallSilent();
                    isSilent_ = false;
                    answered(answer.reply.get());
                });
}

void DaemonTalk::fallSilent() {
    isSilent_ = true;
    board_.setPresence(kind_, DaemonPresence::silent);
}

bool DaemonTalk::isDueAgain() const {
    return isSilent_ && std::chrono::steady_clock::now() - lastTry_ >= kSilentPause;
}

void DaemonTalk::select(const EngineSelection& selection, const char* interface, const char* method,
                        const std::string& engine, const std::function<void()>& look) {
    asked_ = selection.number;
    if (!isOn()) return countAllAsCarriedOut();
    peer_->call(interface, method, g_variant_new("(s)", engine.c_str()), "()", kSwitchLimit,
                [this, number = selection.number, look](const BusAnswer&) {
                    carriedOut_ = number;
                    look();
                });
    // A daemon that hangs is found out sooner by a plain question.
    look();
}

}  // namespace orvel::x11
