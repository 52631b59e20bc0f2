#pragma once

#include "platform/event_monitors.hpp"
#include "platform/qt/qt_run_loop.hpp"
#include "platform/qt/quick_panel_host.hpp"

#include <QObject>
#include <QPoint>

#include <functional>
#include <list>
#include <memory>

struct xcb_connection_t;

namespace orvel::x11 {

/// Presses inside our windows come from Qt; presses elsewhere from the server, which tells of every
/// press without being asked to grab anything. Key presses in other programs are not watched here:
/// they run through the tap. Needs a QApplication.
class X11EventMonitors final : public EventMonitors {
public:
    /// `statusButton` is where the tray shows our item, in Qt's coordinates.
    X11EventMonitors(qt::QtRunLoop& runLoop, qt::QuickPanelHost& panels,
                     std::function<QRect()> statusButton);
    ~X11EventMonitors() override;

    [[nodiscard]] std::unique_ptr<EventMonitor> add(MonitorScope scope, EventMask mask,
                                                    std::string_view owner,
                                                    MonitorHandler handler) override;

private:
    class Filter;
    class Token;
    struct Monitor {
        MonitorScope scope;
        EventMask mask;
        MonitorHandler handler;
    };
    using MonitorList = std::list<std::shared_ptr<Monitor>>;

    void drain();
    void pressed(EventMask type);
    /// False when a local monitor keeps the event from its window.
    bool deliver(MonitorScope scope, const MonitoredEvent& event);

    qt::QuickPanelHost& panels_;
    std::function<QRect()> statusButton_;
    std::shared_ptr<MonitorList> monitors_ = std::make_shared<MonitorList>();
    xcb_connection_t* connection_ = nullptr;
    std::uint8_t inputOpcode_ = 0;
    std::unique_ptr<qt::ReadableWatch> watch_;
    std::unique_ptr<Filter> filter_;
};

}  // namespace orvel::x11
