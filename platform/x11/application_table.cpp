#include "platform/x11/application_table.hpp"

#include <algorithm>
#include <array>

namespace orvel::x11 {

namespace {

using Ids = std::string_view;

constexpr auto kFileManagers = std::to_array<Ids>(
    {"org.gnome.Nautilus", "thunar", "Thunar", "pcmanfm", "pcmanfm-qt", "org.kde.dolphin", "caja",
     "caja-browser", "nemo", "io.elementary.files", "spacefm", "doublecmd", "xfe", "rox"});
constexpr auto kTerminals = std::to_array<Ids>(
    {"org.gnome.Terminal", "org.gnome.Console", "xfce4-terminal", "org.kde.konsole",
     "mate-terminal", "lxterminal", "qterminal", "com.gexperts.Tilix", "terminator", "Alacritty",
     "kitty", "org.wezfurlong.wezterm", "io.elementary.terminal", "sakura", "rxvt-unicode",
     "debian-xterm", "xterm", "debian-uxterm"});
constexpr auto kSystemMonitors =
    std::to_array<Ids>({"gnome-system-monitor", "org.gnome.SystemMonitor", "xfce4-taskmanager",
                        "org.kde.plasma-systemmonitor", "org.kde.ksysguard", "mate-system-monitor",
                        "lxtask", "qps", "btop", "htop"});
constexpr auto kDiskTools = std::to_array<Ids>(
    {"org.gnome.DiskUtility", "gnome-disks", "org.kde.partitionmanager", "gparted", "blivet-gui"});
constexpr auto kSettings =
    std::to_array<Ids>({"org.gnome.Settings", "gnome-control-center", "xfce-settings-manager",
                        "systemsettings", "kdesystemsettings", "cinnamon-settings", "matecc",
                        "lxqt-config", "io.elementary.switchboard", "lxappearance", "obconf"});
constexpr auto kCodeEditors = std::to_array<Ids>(
    {"code", "codium", "code-oss", "com.visualstudio.code", "com.vscodium.codium", "code-insiders",
     "sublime_text", "org.kde.kate", "org.gnome.Builder", "geany"});
constexpr auto kChromes = std::to_array<Ids>(
    {"google-chrome", "com.google.Chrome", "chromium", "chromium-browser", "org.chromium.Chromium",
     "brave-browser", "com.brave.Browser", "vivaldi-stable", "opera"});
constexpr auto kEdges = std::to_array<Ids>({"microsoft-edge", "com.microsoft.Edge"});
constexpr auto kFirefoxes = std::to_array<Ids>(
    {"firefox", "firefox-esr", "org.mozilla.firefox", "librewolf", "torbrowser"});
constexpr auto kOtherBrowsers =
    std::to_array<Ids>({"org.gnome.Epiphany", "org.kde.falkon", "org.kde.konqueror", "midori",
                        "org.qutebrowser.qutebrowser"});
constexpr auto kOverviews = std::to_array<Ids>({"skippy-xd", "xfdashboard", "rofi"});
constexpr auto kLaunchers = std::to_array<Ids>(
    {"xfce4-appfinder", "xfdashboard", "org.kde.krunner", "mate-panel-run", "rofi"});
constexpr auto kScreenshots = std::to_array<Ids>(
    {"org.gnome.Screenshot", "org.flameshot.Flameshot", "xfce4-screenshooter", "org.kde.spectacle",
     "mate-screenshot", "org.ksnip.ksnip", "lximage-qt-screenshot"});

constexpr std::string_view kFinder = "com.apple.finder";
constexpr std::string_view kSafari = "com.apple.Safari";

constexpr auto kCounterparts = std::to_array<Counterpart>({
    {kFinder, "Finder", kFileManagers},
    {"com.apple.Terminal", "Terminal", kTerminals},
    {"com.apple.ActivityMonitor", "Activity Monitor", kSystemMonitors},
    {"com.apple.DiskUtility", "Disk Utility", kDiskTools},
    {"com.apple.systempreferences", "System Settings", kSettings},
    {"com.microsoft.VSCode", "Visual Studio Code", kCodeEditors},
    {"com.google.Chrome", "Google Chrome", kChromes},
    {"com.microsoft.edgemac", "Microsoft Edge", kEdges},
    {"org.mozilla.firefox", "Firefox", kFirefoxes},
    {kSafari, "Safari", kOtherBrowsers},
    {"com.apple.exposelauncher", "Mission Control", kOverviews},
    {"com.apple.launchpad.launcher", "Launchpad", kLaunchers},
    {"com.apple.screenshot.launcher", "Screenshot", kScreenshots},
});

constexpr auto kKindNames = std::to_array<std::pair<ApplicationKind, std::string_view>>(
    {{ApplicationKind::fileManager, "file-manager"},
     {ApplicationKind::terminal, "terminal"},
     {ApplicationKind::browser, "browser"},
     {ApplicationKind::editor, "editor"},
     {ApplicationKind::other, "other"}});

std::string bareId(std::string_view id) {
    constexpr std::string_view kEnding = ".desktop";
    if (id.ends_with(kEnding)) id.remove_suffix(kEnding.size());
    return lowered(id);
}

bool isCandidate(std::span<const std::string_view> candidates, std::string_view id) {
    const auto wanted = bareId(id);
    return std::any_of(candidates.begin(), candidates.end(),
                       [&](std::string_view each) { return lowered(each) == wanted; });
}

const Counterpart* counterpartOf(std::string_view identifierOrName) {
    const auto wanted = lowered(identifierOrName);
    const auto found =
        std::find_if(kCounterparts.begin(), kCounterparts.end(), [&](const Counterpart& each) {
            return lowered(each.identifier) == wanted || lowered(each.name) == wanted;
        });
    return found == kCounterparts.end() ? nullptr : &*found;
}

/// Whether an application not in the list can stand for it all the same.
bool canStandFor(const Counterpart& counterpart, const DesktopEntry& entry) {
    if (isCandidate(counterpart.candidates, entry.id)) return true;
    return counterpart.identifier == kFinder && kindOf(entry) == ApplicationKind::fileManager;
}

}  // namespace

std::string_view kindName(ApplicationKind kind) {
    const auto* found = std::find_if(kKindNames.begin(), kKindNames.end(),
                                     [kind](const auto& row) { return row.first == kind; });
    return found->second;
}

std::optional<ApplicationKind> kindNamed(std::string_view name) {
    const auto* found = std::find_if(kKindNames.begin(), kKindNames.end(),
                                     [name](const auto& row) { return row.second == name; });
    if (found == kKindNames.end()) return std::nullopt;
    return found->first;
}

ApplicationTable::ApplicationTable(const PlatformTable& user, std::vector<std::string>& errors) {
    for (const auto& entry : user.section("applications")) {
        const auto* counterpart = counterpartOf(entry.key);
        if (counterpart == nullptr) {
            errors.push_back(user.errorAt(entry,
                                          "no application of macOS that is used here is "
                                          "called '" +
                                              entry.key + "'"));
            continue;
        }
        chosen_[std::string(counterpart->identifier)] = entry.value;
    }
}

std::span<const Counterpart> ApplicationTable::counterparts() { return kCounterparts; }

const DesktopEntry* ApplicationTable::resolve(const ApplicationIndex& index,
                                              std::string_view identifier,
                                              std::string_view preferred) const {
    const auto* counterpart = counterpartOf(identifier);
    if (counterpart != nullptr) {
        const auto chosen = chosen_.find(std::string(counterpart->identifier));
        if (chosen != chosen_.end()) {
            if (const auto* entry = index.byId(chosen->second)) return entry;
            if (const auto* entry = index.byName(chosen->second)) return entry;
        }
    }
    if (const auto* entry = index.byId(identifier)) return entry;
    if (counterpart == nullptr) return nullptr;
    const auto* favourite = index.byId(preferred);
    if (favourite != nullptr && canStandFor(*counterpart, *favourite)) return favourite;
    for (const auto candidate : counterpart->candidates) {
        if (const auto* entry = index.byId(candidate)) return entry;
    }
    const auto& all = index.entries();
    const auto stand = std::find_if(all.begin(), all.end(), [&](const DesktopEntry& entry) {
        return canStandFor(*counterpart, entry);
    });
    return stand == all.end() ? nullptr : &*stand;
}

const DesktopEntry* ApplicationTable::resolveName(const ApplicationIndex& index,
                                                  std::string_view name,
                                                  std::string_view preferred) const {
    if (const auto* counterpart = counterpartOf(name))
        return resolve(index, counterpart->identifier, preferred);
    if (const auto* entry = index.byId(name)) return entry;
    return index.byName(name);
}

std::optional<std::string> ApplicationTable::macIdentifier(const DesktopEntry& entry) const {
    for (const auto& [identifier, id] : chosen_) {
        if (bareId(id) == bareId(entry.id) || lowered(id) == lowered(entry.name)) return identifier;
    }
    for (const auto& counterpart : kCounterparts) {
        if (isCandidate(counterpart.candidates, entry.id))
            return std::string(counterpart.identifier);
    }
    const auto kind = kindOf(entry);
    if (kind == ApplicationKind::fileManager) return std::string(kFinder);
    if (kind == ApplicationKind::browser) return std::string(kSafari);
    return std::nullopt;
}

ApplicationKind kindOf(const DesktopEntry& entry) {
    if (isCandidate(kFileManagers, entry.id) || entry.hasCategory("FileManager"))
        return ApplicationKind::fileManager;
    if (isCandidate(kTerminals, entry.id) || entry.hasCategory("TerminalEmulator"))
        return ApplicationKind::terminal;
    if (entry.hasCategory("WebBrowser")) return ApplicationKind::browser;
    for (const auto& browsers :
         {std::span<const Ids>(kChromes), std::span<const Ids>(kEdges),
          std::span<const Ids>(kFirefoxes), std::span<const Ids>(kOtherBrowsers)}) {
        if (isCandidate(browsers, entry.id)) return ApplicationKind::browser;
    }
    if (entry.hasCategory("TextEditor") || entry.hasCategory("IDE") ||
        entry.hasCategory("WordProcessor") || isCandidate(kCodeEditors, entry.id))
        return ApplicationKind::editor;
    return ApplicationKind::other;
}

ApplicationKind kindOf(const WindowIdentity& window) {
    constexpr auto kTerminalPrograms = std::to_array<std::string_view>(
        {"xterm", "uxterm", "urxvt", "rxvt", "st", "alacritty", "kitty", "konsole",
         "gnome-terminal-server", "xfce4-terminal", "lxterminal", "terminator", "wezterm-gui"});
    for (const auto& name : {lowered(window.executable), lowered(window.className)}) {
        if (std::find(kTerminalPrograms.begin(), kTerminalPrograms.end(), name) !=
            kTerminalPrograms.end())
            return ApplicationKind::terminal;
        if (isCandidate(kFileManagers, name)) return ApplicationKind::fileManager;
        if (isCandidate(kFirefoxes, name) || isCandidate(kChromes, name))
            return ApplicationKind::browser;
    }
    return ApplicationKind::other;
}

}  // namespace orvel::x11
