#include "platform/x11/x11_event_monitors.hpp"

#include "platform/x11/x_reply.hpp"

#include <QCursor>
#include <QEvent>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QWindow>
#include <xcb/xcb.h>
#include <xcb/xinput.h>

#include <algorithm>
#include <utility>

namespace orvel::x11 {

namespace {

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

/// Whether one of our menus is open, which takes every key wherever the focus is.
bool isMenuOpen() {
    const auto windows = QGuiApplication::topLevelWindows();
    return std::ranges::any_of(
        windows, [](const QWindow* window) { return window->isVisible() && isMenu(*window); });
}

/// Without this the server takes the connection for one that knows no raw events.
void announceInputVersion(xcb_connection_t* connection) {
    const Reply<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
        connection, xcb_input_xi_query_version(connection, 2, 2), nullptr));
}

/// What comes out of all keyboards and pointers together, so that keys which the tap holds back
/// are not seen and those that it sends are.
void selectRawEvents(xcb_connection_t* connection, std::uint32_t bits) {
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t bits;
    } mask{{XCB_INPUT_DEVICE_ALL_MASTER, 1}, bits};
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
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
        if (!watched->isWindowType()) return false;
        const auto& window = *static_cast<QWindow*>(watched);
        if (isMenu(window)) return false;
        if (event->type() == QEvent::MouseButtonPress)
            return isKept(window, *static_cast<QMouseEvent*>(event));
        if (event->type() == QEvent::KeyPress)
            return isKept(window, *static_cast<QKeyEvent*>(event));
        return false;
    }

private:
    bool isKept(const QWindow& window, const QMouseEvent& press) {
        const EventMask type = maskOfButton(press.button());
        monitors_.lastOwnClick_ = {type, static_cast<std::uint32_t>(press.timestamp())};
        if (type == 0) return false;
        return !monitors_.deliver(
            MonitorScope::local,
            {.type = type, .keyCode = 0, .window = monitors_.panels_.panelOf(&window)});
    }
    bool isKept(const QWindow& window, const QKeyEvent& press) {
        const auto key = static_cast<std::uint8_t>(press.nativeScanCode());
        const auto code = monitors_.keyDown(key, static_cast<std::uint32_t>(press.timestamp()));
        if (!code) return false;
        return !monitors_.deliver(MonitorScope::local,
                                  {.type = monitor_mask::keyDown,
                                   .keyCode = *code,
                                   .window = monitors_.panels_.panelOf(&window)});
    }

    X11EventMonitors& monitors_;
};

class X11EventMonitors::Token final : public EventMonitor {
public:
    Token(std::weak_ptr<MonitorList> list, std::shared_ptr<Monitor> monitor)
        : list_(std::move(list)), monitor_(std::move(monitor)) {}
    ~Token() override {
        const auto list = list_.lock();
        if (!list) return;
        list->monitors.remove(monitor_);
        list->changed();
    }

private:
    std::weak_ptr<MonitorList> list_;
    std::shared_ptr<Monitor> monitor_;
};

X11EventMonitors::X11EventMonitors(qt::QtRunLoop& runLoop, qt::QuickPanelHost& panels,
                                   MonitorSources sources)
    : panels_(panels),
      sources_(std::move(sources)),
      connection_(xcb_connect(nullptr, nullptr)),
      filter_(std::make_unique<Filter>(*this)) {
    monitors_->changed = [this] { selectWhatIsWatched(); };
    if (xcb_connection_has_error(connection_) != 0) return;
    const auto* extension = xcb_get_extension_data(connection_, &xcb_input_id);
    if (extension == nullptr || extension->present == 0) return;
    inputOpcode_ = extension->major_opcode;
    announceInputVersion(connection_);
    watch_ = runLoop.watchReadable(xcb_get_file_descriptor(connection_), [this] { drain(); });
}

X11EventMonitors::~X11EventMonitors() {
    monitors_->changed = [] {};
    watch_.reset();
    xcb_disconnect(connection_);
}

std::unique_ptr<EventMonitor> X11EventMonitors::add(MonitorScope scope, EventMask mask,
                                                    std::string_view /*owner*/,
                                                    MonitorHandler handler) {
    auto monitor = std::make_shared<Monitor>(Monitor{scope, mask, std::move(handler)});
    monitors_->monitors.push_back(monitor);
    selectWhatIsWatched();
    return std::make_unique<Token>(monitors_, std::move(monitor));
}

void X11EventMonitors::selectWhatIsWatched() {
    if (inputOpcode_ == 0 || xcb_connection_has_error(connection_) != 0) return;
    std::uint32_t bits = 0;
    for (const auto& monitor : monitors_->monitors) {
        // The status button is a window of the tray: a local monitor hears of it from here too.
        if ((monitor->mask & ~monitor_mask::keyDown) != 0)
            bits |= XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS;
        if (monitor->scope == MonitorScope::global && (monitor->mask & monitor_mask::keyDown) != 0)
            bits |= XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS;
    }
    if (bits == selected_) return;
    selected_ = bits;
    selectRawEvents(connection_, bits);
}

void X11EventMonitors::drain() {
    while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
        if ((event->response_type & 0x7f) != XCB_GE_GENERIC) continue;
        const auto* general = reinterpret_cast<const xcb_ge_generic_event_t*>(event.get());
        if (general->extension != inputOpcode_) continue;
        // Raw presses of keys and of buttons are laid out alike.
        const auto* press = reinterpret_cast<const xcb_input_raw_button_press_event_t*>(general);
        if (general->event_type == XCB_INPUT_RAW_BUTTON_PRESS)
            buttonPressed({maskOfButton(press->detail), press->time});
        if (general->event_type == XCB_INPUT_RAW_KEY_PRESS)
            keyPressed(static_cast<std::uint8_t>(press->detail), press->time);
    }
    // A server that is gone leaves the descriptor readable for ever.
    if (xcb_connection_has_error(connection_) != 0) watch_.reset();
}

void X11EventMonitors::buttonPressed(ButtonPress press) {
    // The tray may say too late where it put the icon that was just clicked.
    if (press.type == 0 || press == lastOwnClick_) return;
    const QPoint point = QCursor::pos();
    for (const QWindow* window : QGuiApplication::topLevelWindows()) {
        // Qt tells of these itself.
        if (window->isVisible() && window->geometry().contains(point)) return;
    }
    const bool isOurs = sources_.statusButton().contains(point);
    deliver(isOurs ? MonitorScope::local : MonitorScope::global,
            {.type = press.type, .keyCode = 0, .window = std::nullopt});
}

void X11EventMonitors::keyPressed(std::uint8_t keycode, std::uint32_t time) {
    // Qt tells of what our own windows get.
    if (QGuiApplication::focusWindow() != nullptr || isMenuOpen()) return;
    if (const auto code = keyDown(keycode, time)) {
        deliver(MonitorScope::global,
                {.type = monitor_mask::keyDown, .keyCode = *code, .window = std::nullopt});
    }
}

std::optional<KeyCode> X11EventMonitors::keyDown(std::uint8_t keycode, std::uint32_t time) {
    // The focus may move between the two reports of one press.
    const KeyPress press{keycode, time};
    if (press == lastPress_) return std::nullopt;
    lastPress_ = press;
    return sources_.keyDown(keycode);
}

bool X11EventMonitors::deliver(MonitorScope scope, const MonitoredEvent& event) {
    const auto told = monitors_->monitors;
    for (const auto& monitor : told) {
        if (monitor->scope != scope || (monitor->mask & event.type) == 0) continue;
        if (std::ranges::find(monitors_->monitors, monitor) == monitors_->monitors.end()) continue;
        const MonitorHandler handler = monitor->handler;
        if (!handler(event) && scope == MonitorScope::local) return false;
    }
    return true;
}

}  // namespace orvel::x11
