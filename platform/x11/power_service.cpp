#include "platform/x11/power_service.hpp"

#include "platform/x11/bus_call.hpp"

#include <array>
#include <cstdlib>
#include <string>
#include <unistd.h>

namespace orvel::x11 {

namespace {

using script::PowerAction;

constexpr const char* kLogind = "org.freedesktop.login1";
constexpr const char* kManagerPath = "/org/freedesktop/login1";
constexpr const char* kManager = "org.freedesktop.login1.Manager";
constexpr const char* kSession = "org.freedesktop.login1.Session";

std::string_view nameOf(PowerAction action) {
    switch (action) {
        case PowerAction::lock: return "lock the screen";
        case PowerAction::sleep: return "suspend the machine";
        case PowerAction::logOut: return "end the session";
        case PowerAction::restart: return "restart the machine";
        case PowerAction::shutDown: return "switch the machine off";
    }
    return {};
}

std::string pathIn(const Result<GVariantHolder>& answer) {
    if (!answer) return {};
    const char* path = nullptr;
    g_variant_get(answer.value().get(), "(&o)", &path);
    return lent(path);
}

/// The session this process runs in: logind knows it by the process, or the environment names it.
std::string sessionPath(const BusConnection& bus) {
    auto path = pathIn(bus.call(kLogind, kManagerPath, kManager, "GetSessionByPID",
                                g_variant_new("(u)", static_cast<guint32>(::getpid()))));
    const char* id = std::getenv("XDG_SESSION_ID");
    if (path.empty() && id != nullptr)
        path = pathIn(
            bus.call(kLogind, kManagerPath, kManager, "GetSession", g_variant_new("(s)", id)));
    // A process outside of every session, such as a user service: the one on the screen is meant.
    if (path.empty()) return std::string("/org/freedesktop/login1/session/auto");
    return path;
}

Result<> nothingElse(const Result<GVariantHolder>& answer) {
    if (!answer) return Failure{answer.error()};
    return {};
}

Result<> callSession(const BusConnection& bus, const char* method) {
    return nothingElse(bus.call(kLogind, sessionPath(bus).c_str(), kSession, method, nullptr));
}

/// The user may be asked for a password: logind is told that somebody is there to answer.
Result<> callManager(const BusConnection& bus, const char* method) {
    return nothingElse(
        bus.call(kLogind, kManagerPath, kManager, method, g_variant_new("(b)", TRUE)));
}

/// A service of the desktop in the user's session, and how it is told.
struct DesktopService {
    const char* name;
    const char* path;
    const char* interface;
    const char* method;
    GVariant* (*parameters)();
};

constexpr auto kLockers = std::to_array<DesktopService>({
    {"org.freedesktop.ScreenSaver", "/org/freedesktop/ScreenSaver", "org.freedesktop.ScreenSaver",
     "Lock", nullptr},
    {"org.gnome.ScreenSaver", "/org/gnome/ScreenSaver", "org.gnome.ScreenSaver", "Lock", nullptr},
    {"org.xfce.ScreenSaver", "/org/xfce/ScreenSaver", "org.xfce.ScreenSaver", "Lock", nullptr},
    {"org.mate.ScreenSaver", "/org/mate/ScreenSaver", "org.mate.ScreenSaver", "Lock", nullptr},
});

/// Session managers ask each application and the user before they end the session.
constexpr auto kSessionManagers = std::to_array<DesktopService>({
    {"org.gnome.SessionManager", "/org/gnome/SessionManager", "org.gnome.SessionManager", "Logout",
     [] { return g_variant_new("(u)", 0U); }},
    {"org.xfce.SessionManager", "/org/xfce/SessionManager", "org.xfce.Session.Manager", "Logout",
     [] { return g_variant_new("(bb)", TRUE, TRUE); }},
    {"org.kde.Shutdown", "/Shutdown", "org.kde.Shutdown", "logout", nullptr},
    {"org.lxqt.session", "/LXQtSession", "org.lxqt.session", "logout", nullptr},
});

/// Tells the first of them that runs; false when none does.
template <std::size_t size>
bool tellOneOf(const std::array<DesktopService, size>& services) {
    const auto bus = BusConnection::open(Bus::session);
    if (!bus) return false;
    for (const auto& service : services) {
        if (!bus.value().hasOwner(service.name)) continue;
        auto* parameters = service.parameters == nullptr ? nullptr : service.parameters();
        if (bus.value().call(service.name, service.path, service.interface, service.method,
                             parameters))
            return true;
    }
    return false;
}

Result<> performWithLogind(const BusConnection& bus, PowerAction action) {
    switch (action) {
        case PowerAction::lock: return callSession(bus, "Lock");
        case PowerAction::sleep: return callManager(bus, "Suspend");
        case PowerAction::logOut: return callSession(bus, "Terminate");
        case PowerAction::restart: return callManager(bus, "Reboot");
        case PowerAction::shutDown: return callManager(bus, "PowerOff");
    }
    return {};
}

}  // namespace

Result<> PowerService::perform(PowerAction action) const {
    if (options_.isDryRun) {
        if (options_.say) options_.say("dry run: would " + std::string(nameOf(action)));
        return {};
    }
    if (action == PowerAction::logOut && tellOneOf(kSessionManagers)) return {};
    // A lock of logind is a wish that nobody need hear; a locker that runs is told itself.
    const bool isLocked = action == PowerAction::lock && tellOneOf(kLockers);
    const auto bus = BusConnection::open(Bus::system);
    auto done = bus ? performWithLogind(bus.value(), action) : Result<>(Failure{bus.error()});
    if (done || isLocked) return {};
    return Failure{"cannot " + std::string(nameOf(action)) + ": " + done.error()};
}

ServiceCheck PowerService::check() {
    const auto bus = BusConnection::open(Bus::system);
    if (bus && bus.value().hasOwner(kLogind))
        return {"session and power", true, false, "logind", {}};
    return {"session and power", false, false,
            "logind does not run: locking, sleep, log out, restart and shut down do nothing",
            "install libpam-systemd, or elogind where systemd is not used"};
}

}  // namespace orvel::x11
