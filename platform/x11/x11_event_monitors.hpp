#pragma once

#include "platform/event_monitors.hpp"
#include "platform/qt/qt_run_loop.hpp"
#include "platform/qt/quick_panel_host.hpp"

#include <QObject>
#include <QRect>

#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <optional>

struct xcb_connection_t;

namespace orvel::x11 {

/// What the monitors ask others for.
struct MonitorSources {
    /// Where the tray shows our item, in Qt's coordinates.
    std::function<QRect()> statusButton;
    /// The key code of an X keycode; absent for modifiers, whose presses are no key-downs.
    std::function<std::optional<KeyCode>(std::uint8_t)> keyDown;
};

/// Presses inside our windows come from Qt; presses elsewhere from the server, which tells of every
/// press without being asked to grab anything. It is asked only for what somebody watches, so that
/// no key is seen while no monitor wants keys. Needs a QApplication.
class X11EventMonitors final : public EventMonitors {
public:
    X11EventMonitors(qt::QtRunLoop& runLoop, qt::QuickPanelHost& panels, MonitorSources sources);
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
    struct MonitorList {
        std::list<std::shared_ptr<Monitor>> monitors;
        std::function<void()> changed;
    };
    struct KeyPress {
        std::uint8_t keycode = 0;
        std::uint32_t time = 0;
        bool operator==(const KeyPress&) const = default;
    };

    struct ButtonPress {
        EventMask type = 0;
        std::uint32_t time = 0;
        bool operator==(const ButtonPress&) const = default;
    };

    void selectWhatIsWatched();
    void drain();
    void buttonPressed(ButtonPress press);
    void keyPressed(std::uint8_t keycode, std::uint32_t time);
    /// The key code of a press that nobody was told of yet.
    std::optional<KeyCode> keyDown(std::uint8_t keycode, std::uint32_t time);
    /// False when a local monitor keeps the event from its window.
    bool deliver(MonitorScope scope, const MonitoredEvent& event);

    qt::QuickPanelHost& panels_;
    MonitorSources sources_;
    std::shared_ptr<MonitorList> monitors_ = std::make_shared<MonitorList>();
    xcb_connection_t* connection_ = nullptr;
    std::uint8_t inputOpcode_ = 0;
    std::uint32_t selected_ = 0;
    KeyPress lastPress_;
    /// The last button press that Qt told of, by the server's clock.
    ButtonPress lastOwnClick_;
    std::unique_ptr<qt::ReadableWatch> watch_;
    std::unique_ptr<Filter> filter_;
};

}  // namespace orvel::x11
