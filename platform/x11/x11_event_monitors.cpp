#include "platform/x11/x11_event_monitors.hpp"

#include <QCursor>
#include <QEvent>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QWindow>
#include <xcb/xcb.h>
#include <xcb/xinput.h>

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace orvel::x11 {

namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
template <typename T>
using Owned = std::unique_ptr<T, Free>;

EventMask maskOfButton(std::uint32_t button) {
    switch (button) {
        case 1: return monitor_mask::leftMouseDown;
        case 2: return monitor_mask::otherMouseDown;
        case 3: return monitor_mask::rightMouseDown;
        default: return 0;  // The wheel, and buttons that close nothing.
    }
}

EventMask maskOfButton(Qt::MouseButton button) {
    switch (button) {
        case Qt::LeftButton: return monitor_mask::leftMouseDown;
        case Qt::RightButton: return monitor_mask::rightMouseDown;
        case Qt::MiddleButton: return monitor_mask::otherMouseDown;
        default: return 0;
    }
}

/// Menus close themselves, and what is pressed in them is no press beside a panel.
bool isMenu(const QWindow& window) { return window.type() == Qt::Popup; }

void selectRawPresses(xcb_connection_t* connection) {
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t bits;
    } mask{{XCB_INPUT_DEVICE_ALL_MASTER, 1}, XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS};
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const Owned<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
        connection, xcb_input_xi_query_version(connection, 2, 2), nullptr));
    xcb_input_xi_select_events(connection, root, 1, &mask.head);
    xcb_flush(connection);
}

}  // namespace

/// Sees every event of our own windows before they do.
class X11EventMonitors::Filter final : public QObject {
public:
    explicit Filter(X11EventMonitors& monitors) : monitors_(monitors) {
        qGuiApp->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::MouseButtonPress || !watched->isWindowType()) return false;
        const auto* window = static_cast<QWindow*>(watched);
        const EventMask type = maskOfButton(static_cast<QMouseEvent*>(event)->button());
        if (type == 0 || isMenu(*window)) return false;
        return !monitors_.deliver(
            MonitorScope::local,
            {.type = type, .keyCode = 0, .window = monitors_.panels_.panelOf(window)});
    }

private:
    X11EventMonitors& monitors_;
};

class X11EventMonitors::Token final : public EventMonitor {
public:
    Token(std::weak_ptr<MonitorList> list, std::shared_ptr<Monitor> monitor)
        : list_(std::move(list)), monitor_(std::move(monitor)) {}
    ~Token() override {
        if (const auto list = list_.lock()) list->remove(monitor_);
    }

private:
    std::weak_ptr<MonitorList> list_;
    std::shared_ptr<Monitor> monitor_;
};

X11EventMonitors::X11EventMonitors(qt::QtRunLoop& runLoop, qt::QuickPanelHost& panels,
                                   std::function<QRect()> statusButton)
    : panels_(panels),
      statusButton_(std::move(statusButton)),
      connection_(xcb_connect(nullptr, nullptr)),
      filter_(std::make_unique<Filter>(*this)) {
    if (xcb_connection_has_error(connection_) != 0) return;
    const auto* extension = xcb_get_extension_data(connection_, &xcb_input_id);
    if (extension == nullptr || extension->present == 0) return;
    inputOpcode_ = extension->major_opcode;
    selectRawPresses(connection_);
    watch_ = runLoop.watchReadable(xcb_get_file_descriptor(connection_), [this] { drain(); });
    runLoop.post([this, alive = std::weak_ptr(monitors_)] {
        if (!alive.expired()) drain();
    });
}

X11EventMonitors::~X11EventMonitors() {
    watch_.reset();
    xcb_disconnect(connection_);
}

std::unique_ptr<EventMonitor> X11EventMonitors::add(MonitorScope scope, EventMask mask,
                                                    std::string_view /*owner*/,
                                                    MonitorHandler handler) {
    auto monitor = std::make_shared<Monitor>(Monitor{scope, mask, std::move(handler)});
    monitors_->push_back(monitor);
    return std::make_unique<Token>(monitors_, std::move(monitor));
}

void X11EventMonitors::drain() {
    while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
        if ((event->response_type & 0x7f) != XCB_GE_GENERIC) continue;
        const auto* general = reinterpret_cast<const xcb_ge_generic_event_t*>(event.get());
        if (general->extension != inputOpcode_ ||
            general->event_type != XCB_INPUT_RAW_BUTTON_PRESS) {
            continue;
        }
        const auto* press = reinterpret_cast<const xcb_input_raw_button_press_event_t*>(general);
        pressed(maskOfButton(press->detail));
    }
    // A server that is gone leaves the descriptor readable for ever.
    if (xcb_connection_has_error(connection_) != 0) watch_.reset();
}

void X11EventMonitors::pressed(EventMask type) {
    if (type == 0) return;
    const QPoint point = QCursor::pos();
    for (const QWindow* window : QGuiApplication::topLevelWindows()) {
        // Qt tells of these itself.
        if (window->isVisible() && window->geometry().contains(point)) return;
    }
    if (statusButton_().contains(point)) {
        deliver(MonitorScope::local, {.type = type, .keyCode = 0, .window = std::nullopt});
    } else {
        deliver(MonitorScope::global, {.type = type, .keyCode = 0, .window = std::nullopt});
    }
}

bool X11EventMonitors::deliver(MonitorScope scope, const MonitoredEvent& event) {
    const MonitorList told = *monitors_;
    for (const auto& monitor : told) {
        if (monitor->scope != scope || (monitor->mask & event.type) == 0) continue;
        if (std::ranges::find(*monitors_, monitor) == monitors_->end()) continue;
        const MonitorHandler handler = monitor->handler;
        if (!handler(event) && scope == MonitorScope::local) return false;
    }
    return true;
}

}  // namespace orvel::x11
