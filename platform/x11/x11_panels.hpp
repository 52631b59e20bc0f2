#pragma once

#include "platform/qt/controls/appearance.hpp"
#include "platform/qt/quick_panel_host.hpp"

namespace orvel::x11 {

/// What an X11 window manager must be told about a panel: that it belongs to every workspace, and
/// its shape where no compositor can show its translucent corners.
class X11Panels final : public qt::PanelNative {
public:
    explicit X11Panels(qt::Appearance& appearance) : appearance_(appearance) {}

    void prepare(QWindow& window, const PanelSpec& spec) override;
    void willShow(QWindow& window, const PanelSpec& spec) override;
    void shown(QWindow& window, const PanelSpec& spec) override;

private:
    qt::Appearance& appearance_;
};

}  // namespace orvel::x11
