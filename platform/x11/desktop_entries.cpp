#include "platform/x11/desktop_entries.hpp"

#include "platform/x11/gio_thread.hpp"
#include "platform/x11/glib_holders.hpp"

#include <gio/gdesktopappinfo.h>
#include <string_view>
#include <utility>

namespace orvel::x11 {

namespace {

std::vector<std::string> splitList(std::string_view text) {
    std::vector<std::string> parts;
    while (!text.empty()) {
        const auto end = text.find(';');
        if (end != 0) parts.emplace_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return parts;
}

std::string lastComponent(const std::string& path) { return path.substr(path.rfind('/') + 1); }

DesktopEntry entryOf(GDesktopAppInfo* desktop) {
    auto* info = G_APP_INFO(desktop);
    DesktopEntry entry;
    entry.id = lent(g_app_info_get_id(info));
    entry.path = lent(g_desktop_app_info_get_filename(desktop));
    entry.name = lent(g_app_info_get_display_name(info));
    entry.startupWmClass = lent(g_desktop_app_info_get_startup_wm_class(desktop));
    entry.executable = lastComponent(lent(g_app_info_get_executable(info)));
    if (auto* icon = g_app_info_get_icon(info)) entry.icon = given(g_icon_to_string(icon));
    entry.categories = splitList(lent(g_desktop_app_info_get_categories(desktop)));
    entry.isShown = g_app_info_should_show(info) != FALSE;
    return entry;
}

ApplicationIndex readEntries() {
    std::vector<DesktopEntry> entries;
    GList* all = g_app_info_get_all();
    for (const GList* each = all; each != nullptr; each = each->next) {
        if (G_IS_DESKTOP_APP_INFO(each->data))
            entries.push_back(entryOf(G_DESKTOP_APP_INFO(each->data)));
    }
    g_list_free_full(all, g_object_unref);
    return ApplicationIndex(std::move(entries));
}

}  // namespace

struct DesktopEntries::Monitor {
    GAppInfoMonitor* monitor = nullptr;
    gulong handler = 0;
};

DesktopEntries::DesktopEntries(GioThread* watcher)
    : index_(std::make_shared<const ApplicationIndex>(readEntries())), watcher_(watcher) {
    if (watcher_ == nullptr) return;
    monitor_ = std::make_unique<Monitor>();
    watcher_->run([this] {
        monitor_->monitor = g_app_info_monitor_get();
        monitor_->handler = g_signal_connect_swapped(
            monitor_->monitor, "changed",
            G_CALLBACK(+[](DesktopEntries* self) { self->readAgain(); }), this);
    });
}

DesktopEntries::~DesktopEntries() {
    if (monitor_ == nullptr) return;
    watcher_->run([this] {
        g_signal_handler_disconnect(monitor_->monitor, monitor_->handler);
        g_object_unref(monitor_->monitor);
    });
}

std::shared_ptr<const ApplicationIndex> DesktopEntries::index() const {
    const std::lock_guard lock(mutex_);
    return index_;
}

std::string DesktopEntries::defaultFor(const char* contentType) {
    const GObjectHolder<GAppInfo> info(g_app_info_get_default_for_type(contentType, FALSE));
    return info == nullptr ? std::string() : lent(g_app_info_get_id(info.get()));
}

void DesktopEntries::onChange(std::function<void()> told) {
    const std::lock_guard lock(mutex_);
    told_ = std::move(told);
}

void DesktopEntries::readAgain() {
    auto fresh = std::make_shared<const ApplicationIndex>(readEntries());
    std::function<void()> told;
    {
        const std::lock_guard lock(mutex_);
        index_ = std::move(fresh);
        told = told_;
    }
    if (told) told();
}

}  // namespace orvel::x11
