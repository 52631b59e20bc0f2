#pragma once

#include "platform/x11/button_path.hpp"
#include "platform/x11/key_path.hpp"
#include "platform/x11/posted_keys.hpp"
#include "platform/x11/x11_session.hpp"

#include <functional>
#include <string>
#include <utility>

namespace orvel::x11 {

/// What the tap, the poster and the input state share: the keymap, the keys that are held, and the
/// one synthetic device through which everything leaves. Main thread.
class InputHub {
public:
    explicit InputHub(X11Session& session);
    InputHub(const InputHub&) = delete;
    InputHub& operator=(const InputHub&) = delete;

    [[nodiscard]] X11Session& session() { return session_; }
    [[nodiscard]] const KeyMap& map() const { return map_; }
    [[nodiscard]] HidState& state() { return state_; }
    [[nodiscard]] OutputLedger& ledger() { return ledger_; }
    [[nodiscard]] KeyPath& path() { return path_; }
    [[nodiscard]] ButtonPath& buttons() { return buttons_; }
    [[nodiscard]] PostedKeys& posted() { return posted_; }
    void setHandler(const EventHandler& handler);
    /// How rewritten and posted shortcuts leave.
    void setTranslator(const ShortcutTranslator& translator);

    /// The place of the key that acts as Fn, as the keymap names it; empty for none.
    void setFnKey(std::string place);
    /// Reads the server's keymap anew.
    void reloadKeyMap();
    void sendMotion(int dx, int dy);
    /// Hands what was sent to the server.
    void flush();
    /// `wake` makes the session's events be handled soon. It is called when an answer of the server
    /// brought events along, since the file descriptor stays quiet about those.
    void onPending(std::function<void()> wake) { wake_ = std::move(wake); }
    /// To be called after requests that waited for an answer.
    void wakeIfPending();

private:
    void sendKey(XKeycode key, bool down);
    void sendButton(XButton number, bool down);

    X11Session& session_;
    std::string fnKey_;
    std::function<void()> wake_;
    KeyMap map_;
    HidState state_;
    OutputLedger ledger_;
    KeyPath path_;
    ButtonPath buttons_;
    PostedKeys posted_;
};

}  // namespace orvel::x11
