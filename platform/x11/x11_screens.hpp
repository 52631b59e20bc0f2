#pragma once

#include "platform/screens.hpp"
#include "platform/x11/late_reading.hpp"
#include "platform/x11/root_layout.hpp"
#include "platform/x11/service_check.hpp"
#include "platform/x11/service_connection.hpp"

#include <functional>
#include <vector>

namespace orvel::x11 {

/// Monitors from RandR and what docks and panels reserve, renewed by the server's own notices: a
/// read costs nothing. Without RandR the whole root window is one screen. The work area of a window
/// manager that has not caught up with the monitors counts for nothing.
class X11Screens final : public Screens {
public:
    explicit X11Screens(ServiceConnection& server);

    [[nodiscard]] std::vector<Screen> screens() const override;

    /// Where the main screen lies, for everybody who turns root coordinates into the ports' own.
    [[nodiscard]] const RootLayout& layout() const { return layout_; }
    /// Tells after the screens or the reserved space changed.
    [[nodiscard]] Subscription onChange(std::function<void(const std::vector<Screen>&)> told);
    [[nodiscard]] ServiceCheck check() const;

private:
    void watch();
    void refresh();
    void setMonitors(std::vector<Monitor> monitors);
    [[nodiscard]] std::vector<Monitor> readMonitors(Deadline deadline);
    [[nodiscard]] std::optional<RootRect> readWorkArea(Deadline deadline);
    [[nodiscard]] std::vector<Strut> readStruts(Deadline deadline);

    ServiceConnection& server_;
    bool hasRandr_ = false;
    RootRect root_;
    std::vector<Monitor> monitors_;
    /// The monitors changed, and the window manager has not said since what is free of them.
    bool isWorkAreaOld_ = false;
    LateReading late_{server_, [this] { refresh(); }};
    RootLayout layout_;
    Published<std::vector<Screen>> screens_;
    std::vector<Subscription> subscriptions_;
};

}  // namespace orvel::x11
