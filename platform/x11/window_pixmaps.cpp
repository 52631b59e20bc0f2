#include "platform/x11/window_pixmaps.hpp"

#include <algorithm>

namespace orvel::x11 {

namespace {

/// Windows inside windows: more than a frame in a frame is nobody's window manager.
constexpr int kMostLevels = 8;

template <typename Event>
const Event& as(const xcb_generic_event_t& event) {
    return reinterpret_cast<const Event&>(event);
}

bool isWanted(const ClientWindow& client) {
    return client.kind != WindowKind::desktop && client.kind != WindowKind::dock;
}

}  // namespace

bool WindowPixmaps::isOffered(ServiceConnection& server, Deadline deadline) {
    if (!server.extensionEvents(xcb_composite_id)) return false;
    const auto version = server.reply<xcb_composite_query_version_reply_t>(
        xcb_composite_query_version(server.raw(), 0, 4), deadline);
    return version != nullptr && (version->major_version > 0 || version->minor_version >= 2);
}

WindowPixmaps::WindowPixmaps(ServiceConnection& server, const ClientWindows& clients)
    : server_(server), clients_(clients), isOffered_(isOffered(server, deadlineIn(kServerLimit))) {
    if (!isOffered_) return;
    watch();
    subscriptions_.push_back(
        clients.onListChange([this](const std::vector<xcb_window_t>& list) { follow(list); }));
    for (const auto& client : clients.windows()) {
        if (isWanted(client)) add(client.id);
    }
}

WindowPixmaps::~WindowPixmaps() {
    while (!pixmaps_.empty()) drop(pixmaps_.begin());
    server_.flush();
}

void WindowPixmaps::watch() {
    const auto on = [this](std::uint8_t type, ServiceConnection::EventHandler handler) {
        subscriptions_.push_back(server_.onEvent(type, std::move(handler)));
    };
    on(XCB_MAP_NOTIFY, [this](const xcb_generic_event_t& event) {
        const auto shown = showing(as<xcb_map_notify_event_t>(event).window);
        if (shown != pixmaps_.end()) rename(shown->first, deadlineIn(kServerLimit));
    });
    // The frame's own changes do not count: window managers let it shrink and fly while they
    // minimise the window.
    on(XCB_CONFIGURE_NOTIFY, [this](const xcb_generic_event_t& event) {
        const auto& notice = as<xcb_configure_notify_event_t>(event);
        const auto changed = pixmaps_.find(notice.window);
        if (changed == pixmaps_.end() ||
            (changed->second.width == notice.width && changed->second.height == notice.height))
            return;
        rename(changed->first, deadlineIn(kServerLimit));
    });
    on(XCB_REPARENT_NOTIFY, [this](const xcb_generic_event_t& event) {
        const auto moved = pixmaps_.find(as<xcb_reparent_notify_event_t>(event).window);
        if (moved == pixmaps_.end()) return;
        findTop(moved->first, moved->second, deadlineIn(kServerLimit));
        rename(moved->first, deadlineIn(kServerLimit));
    });
    on(XCB_UNMAP_NOTIFY, [this](const xcb_generic_event_t& event) {
        const auto gone = pixmaps_.find(as<xcb_unmap_notify_event_t>(event).window);
        if (gone == pixmaps_.end()) return;
        gone->second.isHidden = true;
        if (hidden_) hidden_(gone->first);
    });
}

void WindowPixmaps::follow(const std::vector<xcb_window_t>& clients) {
    for (auto each = pixmaps_.begin(); each != pixmaps_.end();) {
        const auto next = std::next(each);
        if (std::find(clients.begin(), clients.end(), each->first) == clients.end()) drop(each);
        each = next;
    }
    for (const auto window : clients) {
        const auto* client = clients_.find(window);
        if (client != nullptr && isWanted(*client) && !pixmaps_.contains(window)) add(window);
    }
}

void WindowPixmaps::add(xcb_window_t client) {
    const auto deadline = deadlineIn(kServerLimit);
    server_.selectEvents(client, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    auto& pixmap = pixmaps_[client];
    findTop(client, pixmap, deadline);
    rename(client, deadline);
}

void WindowPixmaps::drop(Pixmaps::iterator gone) {
    release(gone->first);
    const auto top = gone->second.top;
    pixmaps_.erase(gone);
    if (top != XCB_WINDOW_NONE)
        xcb_composite_unredirect_window(server_.raw(), top, XCB_COMPOSITE_REDIRECT_AUTOMATIC);
}

void WindowPixmaps::findTop(xcb_window_t client, WindowPixmap& pixmap, Deadline deadline) {
    xcb_window_t top = client;
    for (int level = 0; level < kMostLevels; ++level) {
        const auto tree =
            server_.reply<xcb_query_tree_reply_t>(xcb_query_tree(server_.raw(), top), deadline);
        if (tree == nullptr) return;
        if (tree->parent == server_.root() || tree->parent == XCB_WINDOW_NONE) break;
        top = tree->parent;
    }
    if (top == pixmap.top) return;
    if (pixmap.top != XCB_WINDOW_NONE)
        xcb_composite_unredirect_window(server_.raw(), pixmap.top,
                                        XCB_COMPOSITE_REDIRECT_AUTOMATIC);
    pixmap.top = top;
    server_.selectEvents(top, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    xcb_composite_redirect_window(server_.raw(), top, XCB_COMPOSITE_REDIRECT_AUTOMATIC);
}

WindowPixmaps::Pixmaps::iterator WindowPixmaps::showing(xcb_window_t window) {
    return std::find_if(pixmaps_.begin(), pixmaps_.end(), [window](const auto& each) {
        return each.first == window || each.second.top == window;
    });
}

const WindowPixmap* WindowPixmaps::find(xcb_window_t client) const {
    const auto found = pixmaps_.find(client);
    return found == pixmaps_.end() ? nullptr : &found->second;
}

bool WindowPixmaps::rename(xcb_window_t client, Deadline deadline) {
    const auto known = pixmaps_.find(client);
    if (known == pixmaps_.end()) return false;
    const auto attributes = xcb_get_window_attributes(server_.raw(), client);
    const auto geometry = xcb_get_geometry(server_.raw(), client);
    const auto fresh = xcb_generate_id(server_.raw());
    const auto naming =
        xcb_composite_name_window_pixmap_checked(server_.raw(), known->second.top, fresh);
    const auto seen = server_.reply<xcb_get_window_attributes_reply_t>(attributes, deadline);
    const auto size = server_.reply<xcb_get_geometry_reply_t>(geometry, deadline);
    const bool isNamed = server_.check(naming, deadline);
    // A frame may show for a moment without the window in it.
    const bool isWhole =
        isNamed && size != nullptr && seen != nullptr && seen->map_state == XCB_MAP_STATE_VIEWABLE;
    if (!isWhole) {
        // If the server was only slow, the name exists; else freeing it is an error nobody reads.
        xcb_free_pixmap(server_.raw(), fresh);
        server_.flush();
        return false;
    }
    release(client);
    known->second.pixmap = fresh;
    known->second.width = size->width;
    known->second.height = size->height;
    known->second.isHidden = false;
    return true;
}

void WindowPixmaps::release(xcb_window_t client) {
    const auto known = pixmaps_.find(client);
    if (known == pixmaps_.end() || known->second.pixmap == XCB_PIXMAP_NONE) return;
    xcb_free_pixmap(server_.raw(), known->second.pixmap);
    known->second.pixmap = XCB_PIXMAP_NONE;
    server_.flush();
}

}  // namespace orvel::x11
