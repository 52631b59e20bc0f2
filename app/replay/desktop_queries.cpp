#include "app/replay/query_table.hpp"

namespace orvel::replay {

void writePreferencesState(ReplaySession& session, JsonWriter& out) {
    session.desktop.preferenceStore.writeAll(out);
}

namespace {

void writeWindow(JsonWriter& out, const memory::WorldAxWindow& window) {
    out.beginObject().key("position");
    if (window.position) {
        out.beginArray().value(window.position->x).value(window.position->y).endArray();
    } else {
        out.null();
    }
    out.key("size");
    if (window.size) {
        out.beginArray().value(window.size->width).value(window.size->height).endArray();
    } else {
        out.null();
    }
    out.member("minimized", window.isMinimized).endObject();
}

}  // namespace

void writeWindowsState(ReplaySession& session, JsonWriter& out) {
    out.beginObject();
    for (const memory::WorldWindow& window : session.desktop.world.windows) {
        if (!window.ax) continue;
        out.key(std::to_string(window.info.number));
        writeWindow(out, *window.ax);
    }
    out.endObject();
}

void writeMonitorsState(ReplaySession& session, JsonWriter& out) {
    out.beginArray();
    for (const auto& monitor : session.desktop.eventMonitors.installed()) {
        out.beginObject()
            .member("scope", memory::scopeName(monitor->scope))
            .member("mask", monitor->mask)
            .member("owner", monitor->owner)
            .endObject();
    }
    out.endArray();
}

}  // namespace orvel::replay
