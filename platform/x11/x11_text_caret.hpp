#pragma once

#include "platform/text_caret.hpp"
#include "platform/x11/accessible_focus.hpp"
#include "platform/x11/client_windows.hpp"
#include "platform/x11/service_check.hpp"
#include "platform/x11/x11_screens.hpp"

#include <memory>

namespace orvel::x11 {

/// Asks the application in front over the accessibility bus, on a thread of its own. Each
/// application is asked for the first time when it comes to the front, with nobody waiting. One
/// that is stopped costs nothing; one that hangs otherwise costs a short wait, once: from then on
/// it is asked with nobody waiting, until it has answered in time.
class X11TextCaret final : public TextCaret {
public:
    X11TextCaret(AccessibleFocus& focus, ClientWindows& clients, const X11Screens& screens);
    ~X11TextCaret() override;
    X11TextCaret(const X11TextCaret&) = delete;
    X11TextCaret& operator=(const X11TextCaret&) = delete;

    [[nodiscard]] std::optional<AxRect> caretRect() const override;

    /// Whether applications can tell where their caret is.
    [[nodiscard]] static ServiceCheck check();

private:
    class Asker;

    const ClientWindows& clients_;
    const X11Screens& screens_;
    std::unique_ptr<Asker> asker_;
    Subscription frontChange_;
};

}  // namespace orvel::x11
