#include "platform/x11/server_questions.hpp"

#include "platform/x11/x_reply.hpp"

#include <QGuiApplication>
#include <xcb/xcb.h>

namespace orvel::x11 {

xcb_connection_t* serverOfQt() {
    auto* native = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return native == nullptr ? nullptr : native->connection();
}

std::uint32_t internAtom(xcb_connection_t* server, std::string_view name) {
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        server, xcb_intern_atom(server, 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

std::uint32_t selectionOwner(xcb_connection_t* server, std::uint32_t selection) {
    const Reply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(server, xcb_get_selection_owner(server, selection), nullptr));
    return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
}

}  // namespace orvel::x11
