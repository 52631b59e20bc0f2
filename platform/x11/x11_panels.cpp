#include "platform/x11/x11_panels.hpp"

#include "platform/x11/server_questions.hpp"

#include <QPainterPath>
#include <QRegion>
#include <QVariant>
#include <QWindow>
#include <xcb/xcb.h>

#include <string_view>

namespace orvel::x11 {

namespace {

constexpr std::uint32_t kEveryWorkspace = 0xFFFFFFFF;

xcb_window_t rootOf(xcb_connection_t* server) {
    return xcb_setup_roots_iterator(xcb_get_setup(server)).data->root;
}

bool isCompositorRunning(xcb_connection_t* server) {
    return selectionOwner(server, internAtom(server, "_NET_WM_CM_S0")) != XCB_WINDOW_NONE;
}

void askForEveryWorkspace(xcb_connection_t* server, xcb_window_t window) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = internAtom(server, "_NET_WM_DESKTOP");
    message.data.data32[0] = kEveryWorkspace;
    message.data.data32[1] = 2;  // From a pager: window managers obey it.
    xcb_send_event(server, 0, rootOf(server),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(server);
}

/// The outline of the settings panel: rounded corners and, on top, the arrow if it has one.
QRegion settingsOutline(QSize size, bool hasArrow) {
    constexpr int arrowHeight = 10;
    constexpr int arrowHalf = 11;
    constexpr int radius = 12;
    QPainterPath body;
    body.addRoundedRect(QRectF(0, arrowHeight, size.width(), size.height() - arrowHeight), radius,
                        radius);
    const QRegion outline(body.toFillPolygon().toPolygon());
    if (!hasArrow) return outline;
    const int middle = size.width() / 2;
    const QPolygon arrow({{middle - arrowHalf, arrowHeight + 1},
                          {middle, 0},
                          {middle + arrowHalf, arrowHeight + 1}});
    return outline.united(arrow);
}

}  // namespace

void X11Panels::prepare(QWindow& window, const PanelSpec& spec) {
    const std::string_view name = panelName(spec.id);
    window.setTitle(spec.id == PanelId::settings
                        ? QStringLiteral("Orvel")
                        : QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())));
}

void X11Panels::willShow(QWindow& window, const PanelSpec& spec) {
    xcb_connection_t* server = serverOfQt();
    if (server == nullptr) return;
    const bool isComposited = isCompositorRunning(server);
    appearance_.setComposited(isComposited);
    if (spec.id != PanelId::settings) return;
    const QVariant isBelow = window.property(qt::kBelowStatusItem);
    const bool hasArrow = !isBelow.isValid() || isBelow.toBool();
    window.setMask(isComposited ? QRegion() : settingsOutline(window.size(), hasArrow));
}

void X11Panels::shown(QWindow& window, const PanelSpec&) {
    xcb_connection_t* server = serverOfQt();
    if (server == nullptr) return;
    // Window managers forget it whenever the window is hidden.
    askForEveryWorkspace(server, static_cast<xcb_window_t>(window.winId()));
}

}  // namespace orvel::x11
