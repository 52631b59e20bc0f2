#include "platform/x11/application_launcher.hpp"

#include "platform/x11/child_programs.hpp"
#include "platform/x11/glib_holders.hpp"

#include <algorithm>
#include <gio/gdesktopappinfo.h>

namespace orvel::x11 {

namespace {

using Context = GObjectHolder<GAppLaunchContext>;

Context contextFor(const std::string& display) {
    Context context(g_app_launch_context_new());
    if (!display.empty()) g_app_launch_context_setenv(context.get(), "DISPLAY", display.c_str());
    return context;
}

Result<> outcomeOf(gboolean isDone, GError* problem) {
    const GErrorHolder error(problem);
    if (isDone != FALSE) return {};
    return Failure{messageOf(error)};
}

/// Runs in the child between fork and exec.
void prepareChild(gpointer folder) {
    detachFromParent();
    // In a folder that vanished meanwhile the application begins where it begins without one.
    if (folder != nullptr && ::chdir(static_cast<const char*>(folder)) != 0) return;
}

Result<> launch(const std::string& desktopFile, const std::vector<std::string>& uris,
                const char* folder, const std::string& display) {
    const GObjectHolder<GDesktopAppInfo> application(
        g_desktop_app_info_new_from_filename(desktopFile.c_str()));
    if (application == nullptr)
        return Failure{desktopFile + " is no application that can be started"};
    GList* list = nullptr;
    for (auto uri = uris.rbegin(); uri != uris.rend(); ++uri)
        list = g_list_prepend(list, const_cast<char*>(uri->c_str()));
    GError* problem = nullptr;
    const auto isDone = g_desktop_app_info_launch_uris_as_manager(
        application.get(), list, contextFor(display).get(), G_SPAWN_SEARCH_PATH, prepareChild,
        const_cast<char*>(folder), nullptr, nullptr, &problem);
    g_list_free(list);
    return outcomeOf(isDone, problem);
}

}  // namespace

Result<> ApplicationLauncher::openApplication(const std::string& path,
                                              const std::vector<std::string>& uris) const {
    if (path.ends_with(".desktop")) return launch(path, uris, nullptr, display_);
    std::vector<std::string> paths;
    for (const auto& uri : uris) {
        const auto local = given(g_filename_from_uri(uri.c_str(), nullptr, nullptr));
        paths.push_back(local.empty() ? uri : local);
    }
    return startProgram(path, paths, display_);
}

Result<> ApplicationLauncher::openApplicationIn(const std::string& path,
                                                const std::string& folder) const {
    return launch(path, {}, folder.c_str(), display_);
}

Result<> ApplicationLauncher::openUri(const std::string& uri) const {
    GError* problem = nullptr;
    const auto isDone =
        g_app_info_launch_default_for_uri(uri.c_str(), contextFor(display_).get(), &problem);
    return outcomeOf(isDone, problem);
}

std::string toUri(std::string_view pathOrUri) {
    std::string text(pathOrUri);
    if (text.find("://") != std::string::npos || !text.starts_with('/')) return text;
    return given(g_filename_to_uri(text.c_str(), nullptr, nullptr));
}

}  // namespace orvel::x11
