#pragma once

#include <QColor>
#include <QSocketNotifier>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

struct xcb_connection_t;

namespace orvel::x11 {

/// Follows the colour that the tray of this screen wants symbols in; many trays want none. Asks on
/// a connection of its own, since on Qt's the tray's changes are switched off again and again. Main
/// thread.
class TrayColors {
public:
    /// `told` is called with what holds now and with every change.
    explicit TrayColors(std::function<void(const std::optional<QColor>&)> told);
    ~TrayColors();
    TrayColors(const TrayColors&) = delete;
    TrayColors& operator=(const TrayColors&) = delete;

private:
    void readEvents();
    void findTray();
    void readColors();

    std::function<void(const std::optional<QColor>&)> told_;
    xcb_connection_t* server_;
    std::uint32_t selection_ = 0;
    std::uint32_t property_ = 0;
    std::uint32_t announcement_ = 0;
    std::uint32_t tray_ = 0;
    std::unique_ptr<QSocketNotifier> events_;
};

}  // namespace orvel::x11
