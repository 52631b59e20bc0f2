#pragma once

#include "platform/window_list.hpp"
#include "platform/x11/client_windows.hpp"
#include "platform/x11/window_manager.hpp"
#include "platform/x11/x11_screens.hpp"

#include <vector>

namespace orvel::x11 {

/// The window manager's stacking order with what people see of each window. Docks and the desktop
/// itself are left out.
class X11WindowList final : public WindowList {
public:
    X11WindowList(WindowManager& manager, const ClientWindows& clients, const X11Screens& screens);

    [[nodiscard]] std::vector<WindowInfo> windows(WindowListScope scope) const override;

private:
    WindowManager& manager_;
    const ClientWindows& clients_;
    const X11Screens& screens_;
};

}  // namespace orvel::x11
