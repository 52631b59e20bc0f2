#pragma once

#include "platform/text_caret.hpp"
#include "platform/x11/accessible_focus.hpp"
#include "platform/x11/client_windows.hpp"
#include "platform/x11/service_check.hpp"
#include "platform/x11/x11_screens.hpp"

#include <memory>

namespace orvel::x11 {

/// Asks the application in front over the accessibility bus, on a thread of its own: an application
/// that hangs costs at most the limit.
class X11TextCaret final : public TextCaret {
public:
    X11TextCaret(AccessibleFocus& focus, const ClientWindows& clients, const X11Screens& screens);
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
};

}  // namespace orvel::x11
