#include "platform/x11/input_methods.hpp"

#include "platform/x11/fcitx_daemon.hpp"
#include "platform/x11/ibus_daemon.hpp"

#include <array>
#include <optional>
#include <string>
#include <utility>

namespace orvel::x11 {

namespace {

constexpr std::chrono::milliseconds kLookPause{200};
constexpr std::chrono::milliseconds kDoctorsPatience{1500};
constexpr std::array kKinds{DaemonKind::fcitx, DaemonKind::ibus};

std::string listed(const InputMethodState& state) {
    std::string text;
    for (const auto& engine : state.engines) {
        text += text.empty() ? "" : ", ";
        text += engine.name;
        if (!engine.language.empty()) text += " (" + engine.language + ")";
    }
    return text;
}

}  // namespace

/// What happens on the thread of the daemons.
class InputMethods::Talk {
public:
    explicit Talk(InputMethodBoard& board) {
        auto session = BusConnection::open(Bus::session);
        if (!session) {
            for (const auto kind : kKinds) board.setPresence(kind, DaemonPresence::absent);
            return;
        }
        session_.emplace(std::move(session).value());
        fcitx_.emplace(*session_, board);
        ibus_.emplace(*session_, board);
    }

    void select(const EngineSelection& selection) {
        if (!session_) return;
        daemon(selection.daemon).select(selection);
    }
    void refresh() {
        if (!session_) return;
        for (const auto kind : kKinds) daemon(kind).refresh();
    }

private:
    InputMethodDaemon& daemon(DaemonKind kind) {
        if (kind == DaemonKind::fcitx) return *fcitx_;
        return *ibus_;
    }

    std::optional<BusConnection> session_;
    std::optional<FcitxDaemon> fcitx_;
    std::optional<IbusDaemon> ibus_;
};

InputMethods::InputMethods(std::function<void(std::string_view)> say) : say_(std::move(say)) {
    gio_.post([this] { talk_ = std::make_unique<Talk>(board_); });
}

InputMethods::~InputMethods() {
    gio_.run([this] { talk_.reset(); });
}

bool InputMethods::select(std::string_view id) {
    auto selection = board_.select(id);
    if (!selection) return false;
    gio_.post([this, wanted = *std::move(selection)] { talk_->select(wanted); });
    return true;
}

void InputMethods::noticeActivity() {
    const auto now = std::chrono::steady_clock::now();
    if (now - lastLook_ < kLookPause) return;
    lastLook_ = now;
    gio_.post([this] { talk_->refresh(); });
    sayWhatCounts();
}

void InputMethods::sayWhatCounts() {
    const auto counts = board_.offering();
    if (counts == said_) return;
    said_ = counts;
    if (!say_) return;
    say_(counts ? std::string("⌨️ 输入法切换: ") + daemonName(*counts)
                : std::string("⌨️ 输入法切换: 键盘布局"));
}

ServiceCheck InputMethods::check() const {
    board_.waitUntilKnown(kDoctorsPatience);
    ServiceCheck check{"input methods", true, false, "neither IBus nor Fcitx 5 runs", {}};
    if (const auto offer = board_.offer()) {
        check.finding = "Shift switches between " + listed(*offer);
        return check;
    }
    for (const auto kind : kKinds) {
        const auto presence = board_.presence(kind);
        if (presence == DaemonPresence::absent) continue;
        check.isOk = false;
        const std::string name = daemonName(kind);
        check.finding = presence == DaemonPresence::answering
                            ? name + " has nothing to switch between; Shift switches layouts"
                            : name + " runs and does not answer; Shift switches layouts";
        check.remedy = presence == DaemonPresence::answering
                           ? "add an English layout and a Chinese input method in its settings"
                           : "start " + name + " again";
    }
    return check;
}

}  // namespace orvel::x11
