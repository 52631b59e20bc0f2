#include "platform/x11/desktop_windows.hpp"

#include <algorithm>

namespace orvel::x11 {

namespace {

const Failure kBusy{"the desktop does not answer"};

std::optional<FileManagerWindow> findFileManagerWindow(WindowManager& manager,
                                                       const ClientWindows& clients) {
    const auto deadline = deadlineIn(kServerLimit);
    const auto stacking = manager.stacking(deadline);
    for (auto window = stacking.rbegin(); window != stacking.rend(); ++window) {
        const auto* client = clients.find(*window);
        const auto* owner = clients.owner(*window);
        if (client == nullptr || owner == nullptr || client->kind != WindowKind::normal ||
            owner->kind != ApplicationKind::fileManager)
            continue;
        return FileManagerWindow{client->process, manager.title(*window, deadline).value_or(""),
                                 owner->path};
    }
    return std::nullopt;
}

bool raiseTitled(WindowManager& manager, const ApplicationGroup* group, const std::string& title) {
    if (group == nullptr) return false;
    const auto deadline = deadlineIn(kServerLimit);
    const auto titled =
        std::find_if(group->windows.begin(), group->windows.end(),
                     [&](xcb_window_t window) { return manager.title(window, deadline) == title; });
    return titled != group->windows.end() && manager.activate(*titled, deadline);
}

bool activateGroup(WindowManager& manager, const ClientWindows& clients, const std::string& id) {
    const auto& groups = clients.groups();
    const auto running = std::find_if(groups.begin(), groups.end(), [&](const auto& group) {
        return group.bundleId == id && group.isRegular;
    });
    return running != groups.end() &&
           manager.activateTopmost(running->windows, deadlineIn(kServerLimit));
}

}  // namespace

Result<> DesktopWindows::toggleShowDesktop() {
    const auto isDone =
        mainThread_.ask([this] { return manager_.toggleShowDesktop(deadlineIn(kServerLimit)); });
    if (!isDone) return kBusy;
    if (!*isDone) return Failure{"the window manager cannot show the desktop"};
    return {};
}

Result<> DesktopWindows::raise(ProcessId handle, const std::string& title) {
    const auto asked = mainThread_.ask(
        [this, handle, title] { return raiseTitled(manager_, clients_.group(handle), title); });
    if (!asked) return kBusy;
    return {};
}

Result<bool> DesktopWindows::activateApplication(const std::string& desktopFileId) {
    const auto activated = mainThread_.ask(
        [this, desktopFileId] { return activateGroup(manager_, clients_, desktopFileId); });
    if (!activated) return kBusy;
    return *activated;
}

Result<std::optional<FileManagerWindow>> DesktopWindows::frontFileManagerWindow() {
    auto found = mainThread_.ask([this] { return findFileManagerWindow(manager_, clients_); });
    if (!found) return kBusy;
    return *std::move(found);
}

}  // namespace orvel::x11
