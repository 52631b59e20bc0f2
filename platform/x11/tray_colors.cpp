#include "platform/x11/tray_colors.hpp"

#include "platform/x11/server_questions.hpp"
#include "platform/x11/x_reply.hpp"

#include <xcb/xcb.h>

#include <memory>
#include <utility>

namespace orvel::x11 {

TrayColors::TrayColors(std::function<void(const std::optional<QColor>&)> told)
    : told_(std::move(told)), server_(xcb_connect(nullptr, nullptr)) {
    if (xcb_connection_has_error(server_) != 0) return;
    selection_ = internAtom(server_, "_NET_SYSTEM_TRAY_S0");
    property_ = internAtom(server_, "_NET_SYSTEM_TRAY_COLORS");
    announcement_ = internAtom(server_, "MANAGER");
    // Where trays announce themselves.
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(server_)).data->root;
    const std::uint32_t announcements = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(server_, root, XCB_CW_EVENT_MASK, &announcements);
    events_ =
        std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(server_), QSocketNotifier::Read);
    QObject::connect(events_.get(), &QSocketNotifier::activated, events_.get(),
                     [this] { readEvents(); });
    findTray();
    readEvents();
}

TrayColors::~TrayColors() {
    events_.reset();
    xcb_disconnect(server_);
}

void TrayColors::readEvents() {
    while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(server_)}) {
        const int type = event->response_type & 0x7f;
        if (type == XCB_PROPERTY_NOTIFY) {
            const auto& change = reinterpret_cast<xcb_property_notify_event_t&>(*event);
            if (change.window == tray_ && change.atom == property_) readColors();
        } else if (type == XCB_CLIENT_MESSAGE) {
            const auto& told = reinterpret_cast<xcb_client_message_event_t&>(*event);
            if (told.type == announcement_ && told.data.data32[1] == selection_) findTray();
        }
    }
    // The server is gone; the program ends by what others notice.
    if (xcb_connection_has_error(server_) != 0) events_->setEnabled(false);
}

void TrayColors::findTray() {
    tray_ = selectionOwner(server_, selection_);
    if (tray_ == XCB_WINDOW_NONE) return;
    const std::uint32_t changes = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(server_, tray_, XCB_CW_EVENT_MASK, &changes);
    readColors();
}

/// Red, green and blue of the symbols come first, each of 16 bits in a number of its own.
void TrayColors::readColors() {
    constexpr std::uint32_t kParts = 3;
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        server_, xcb_get_property(server_, 0, tray_, property_, XCB_ATOM_CARDINAL, 0, kParts),
        nullptr));
    std::optional<QColor> color;
    if (reply && reply->format == 32 && reply->value_len == kParts) {
        const auto* parts = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
        const auto part = [parts](int i) { return static_cast<int>(parts[i] >> 8U & 0xffU); };
        color = QColor(part(0), part(1), part(2));
    }
    told_(color);
}

}  // namespace orvel::x11
