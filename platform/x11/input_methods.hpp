#pragma once

#include "platform/x11/gio_thread.hpp"
#include "platform/x11/input_method_board.hpp"
#include "platform/x11/service_check.hpp"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>

namespace orvel::x11 {

/// The input method daemons of this session, talked to on a thread of their own: they may start,
/// die or hang at any moment and no call here waits for them. Main thread.
class InputMethods {
public:
    /// `say` is told, from `noticeActivity`, what Shift switches whenever that changes; may be
    /// null.
    explicit InputMethods(std::function<void(std::string_view)> say = nullptr);
    ~InputMethods();
    InputMethods(const InputMethods&) = delete;
    InputMethods& operator=(const InputMethods&) = delete;

    /// What the daemon that counts told last; null while none offers a choice.
    [[nodiscard]] InputMethodBoard::Snapshot offer() const { return board_.offer(); }
    /// False when the daemon that counts does not have that engine.
    bool select(std::string_view id);
    /// To be called often while something happens: what daemons do not tell is asked for then, at
    /// most a few times a second.
    void noticeActivity();
    /// For the doctor, who waits a moment for daemons that answer late.
    [[nodiscard]] ServiceCheck check() const;

private:
    class Talk;

    void sayWhatCounts();

    std::function<void(std::string_view)> say_;
    InputMethodBoard board_;
    std::optional<DaemonKind> said_;
    std::chrono::steady_clock::time_point lastLook_;
    std::unique_ptr<Talk> talk_;
    GioThread gio_;
};

}  // namespace orvel::x11
