#include "platform/x11/input_method_board.hpp"

#include <algorithm>
#include <utility>

namespace orvel::x11 {

const InputMethodEngine* InputMethodState::find(std::string_view id) const {
    const auto found = std::ranges::find(engines, id, &InputMethodEngine::id);
    return found == engines.end() ? nullptr : &*found;
}

const char* daemonName(DaemonKind kind) { return kind == DaemonKind::fcitx ? "Fcitx 5" : "IBus"; }

InputMethodBoard::Snapshot InputMethodBoard::offer() const {
    const std::lock_guard lock(mutex_);
    const std::size_t place = counting();
    return place == kDaemonCount ? nullptr : daemons_.at(place).state;
}

std::optional<DaemonKind> InputMethodBoard::offering() const {
    const std::lock_guard lock(mutex_);
    const std::size_t place = counting();
    if (place == kDaemonCount) return std::nullopt;
    return daemons_.at(place).kind;
}

DaemonPresence InputMethodBoard::presence(DaemonKind kind) const {
    const std::lock_guard lock(mutex_);
    return daemons_.at(static_cast<std::size_t>(kind)).presence;
}

void InputMethodBoard::waitUntilKnown(std::chrono::milliseconds limit) const {
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, limit, [this] { return isKnown(); });
}

std::optional<EngineSelection> InputMethodBoard::select(std::string_view id) {
    const std::lock_guard lock(mutex_);
    const std::size_t place = counting();
    if (place == kDaemonCount || daemons_.at(place).state->find(id) == nullptr) return std::nullopt;
    Daemon& daemon = daemons_.at(place);
    auto state = std::make_shared<InputMethodState>(*daemon.state);
    state->current = std::string(id);
    daemon.state = std::move(state);
    return EngineSelection{daemon.kind, std::string(id), ++daemon.selections};
}

void InputMethodBoard::tell(DaemonKind kind, InputMethodState state, std::uint64_t selection) {
    const std::lock_guard lock(mutex_);
    Daemon& daemon = at(kind);
    if (selection != daemon.selections && state.find(daemon.state->current) != nullptr)
        state.current = daemon.state->current;
    daemon.state = std::make_shared<const InputMethodState>(std::move(state));
    daemon.presence = DaemonPresence::answering;
    changed_.notify_all();
}

void InputMethodBoard::setPresence(DaemonKind kind, DaemonPresence presence) {
    const std::lock_guard lock(mutex_);
    at(kind).presence = presence;
    changed_.notify_all();
}

std::size_t InputMethodBoard::counting() const {
    const auto found = std::ranges::find_if(daemons_, [](const Daemon& daemon) {
        return daemon.presence == DaemonPresence::answering && daemon.state->offersChoice();
    });
    return static_cast<std::size_t>(found - daemons_.begin());
}

bool InputMethodBoard::isKnown() const {
    return std::ranges::none_of(
        daemons_, [](const Daemon& daemon) { return daemon.presence == DaemonPresence::unknown; });
}

}  // namespace orvel::x11
