#pragma once

#include <string>
#include <vector>

namespace orvel {

/// What the engine asks of the desktop overlay. Main thread.
class OverlayCommands {
public:
    virtual ~OverlayCommands() = default;

    [[nodiscard]] virtual bool isClipboardShowing() const = 0;
    [[nodiscard]] virtual bool isStartMenuShowing() const = 0;
    virtual void toggleClipboardMenu() = 0;
    /// Closes the start menu while it shows, shows it otherwise.
    virtual void toggleStartMenu() = 0;
    virtual void showGeekMenu() = 0;
    /// Bundle identifiers of the taskbar's entries in display order.
    [[nodiscard]] virtual std::vector<std::string> currentTaskbarAppIds() const = 0;
};

}  // namespace orvel
