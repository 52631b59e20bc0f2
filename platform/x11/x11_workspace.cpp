#include "platform/x11/x11_workspace.hpp"

#include "platform/x11/desktop_entries.hpp"
#include "platform/x11/image_codec.hpp"

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <memory>
#include <unistd.h>
#include <utility>

namespace orvel::x11 {

namespace {

/// The largest size at which icons are drawn, 48 points, on a screen of double density.
constexpr int kIconSize = 96;
constexpr std::string_view kNoIcon = "application-x-executable";

RunningApplication describe(const ApplicationGroup& group, bool isActive) {
    RunningApplication application;
    application.pid = group.handle;
    if (!group.bundleId.empty()) application.bundleId = group.bundleId;
    application.name = group.name;
    auto path = group.path.empty() ? programPath(group.process) : group.path;
    if (!path.empty()) application.path = std::move(path);
    application.policy = group.isRegular ? ActivationPolicy::regular : ActivationPolicy::accessory;
    application.isActive = isActive;
    return application;
}

}  // namespace

X11Workspace::X11Workspace(ClientWindows& clients, WindowManager& manager)
    : clients_(clients), manager_(manager), icons_(IconTheme::ofSession()) {
    subscriptions_.push_back(
        clients_.onFrontChange([this](const FrontApplication&) { frontChanged(); }));
    frontChanged();
}

void X11Workspace::frontChanged() {
    const auto* front = clients_.front();
    frontmost_.reset();
    frontmostKind_ = ApplicationKind::other;
    if (front == nullptr) return;
    frontmost_ = FrontmostApplication{front->handle, std::nullopt};
    if (!front->frontmostId.empty()) frontmost_->bundleId = front->frontmostId;
    frontmostKind_ = front->kind;
}

std::optional<FrontmostApplication> X11Workspace::frontmostApplication() const {
    return frontmost_;
}

std::vector<RunningApplication> X11Workspace::runningApplications() const {
    const auto* front = clients_.front();
    std::vector<RunningApplication> running;
    for (const auto& group : clients_.groups()) running.push_back(describe(group, front == &group));
    return running;
}

std::optional<std::string> X11Workspace::applicationPath(std::string_view bundleId) const {
    const auto index = clients_.index();
    const auto* entry =
        clients_.table().resolve(*index, bundleId, DesktopEntries::defaultFor("inode/directory"));
    if (entry == nullptr) return std::nullopt;
    return entry->path;
}

std::string X11Workspace::displayName(std::string_view path) const {
    const auto index = clients_.index();
    if (const auto* entry = index->byPath(path)) return entry->name;
    std::string name = std::filesystem::path(path).filename().string();
    constexpr std::string_view kBundleEnding = ".app";
    if (name.ends_with(kBundleEnding)) name.resize(name.size() - kBundleEnding.size());
    return name;
}

Picture X11Workspace::icon(std::string_view path) const {
    if (const auto known = pictures_.find(path); known != pictures_.end()) return known->second;
    const auto index = clients_.index();
    const auto* entry = index->byPath(path);
    const std::string wanted =
        entry != nullptr ? entry->icon : std::filesystem::path(path).filename().string();
    Picture picture;
    for (const std::string_view name : {std::string_view(wanted), kNoIcon}) {
        const auto file = icons_.find(name, kIconSize);
        if (!file) continue;
        auto bitmap = readPicture(file->string(), kIconSize);
        if (!bitmap) continue;
        auto pixels = std::make_shared<const Bitmap>(std::move(bitmap).value());
        picture = {pixels->width, pixels->height, ++lastSerial_, pixels};
        break;
    }
    pictures_.emplace(path, picture);
    return picture;
}

void X11Workspace::activate(ProcessId pid, int /*options*/) {
    if (const auto* group = clients_.group(pid))
        manager_.activateTopmost(group->windows, deadlineIn(kServerLimit));
}

void X11Workspace::terminate(ProcessId pid) {
    const auto* group = clients_.group(pid);
    if (group == nullptr) return;
    for (const auto window : group->windows) manager_.close(window);
}

void X11Workspace::forceTerminate(ProcessId pid) {
    const auto* group = clients_.group(pid);
    if (group == nullptr) return;
    for (const auto window : group->windows) {
        const auto* client = clients_.find(window);
        // Where nobody knows the process, the server can still end its connection.
        if (client == nullptr || client->process <= 0)
            manager_.disconnectOwner(window);
        else if (client->process != ::getpid())
            ::kill(client->process, SIGKILL);
    }
}

Subscription X11Workspace::onRunningChange(std::function<void()> told) {
    return clients_.onListChange([told = std::move(told)](const auto&) { told(); });
}

ServiceCheck X11Workspace::check() const {
    const auto index = clients_.index();
    if (index->entries().empty())
        return {"applications", false, false,
                "no desktop files are installed: applications have neither name nor icon",
                "check XDG_DATA_DIRS"};
    const auto preferred = DesktopEntries::defaultFor("inode/directory");
    if (clients_.table().resolve(*index, "com.apple.finder", preferred) == nullptr)
        return {"applications", false, false, "no file manager is installed",
                "install one, such as pcmanfm or thunar"};
    return {"applications",
            true,
            false,
            std::to_string(index->entries().size()) + " installed applications",
            {}};
}

}  // namespace orvel::x11
