#include "platform/x11/panel_settings.hpp"

#include "platform/x11/bus_call.hpp"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>

namespace orvel::x11 {

namespace {

constexpr const char* kXfconf = "org.xfce.Xfconf";
constexpr const char* kXfconfPath = "/org/xfce/Xfconf";
constexpr const char* kXfceChannel = "xfce4-panel";
constexpr const char* kPlasma = "org.kde.plasmashell";

bool isProgramRunning(std::string_view program) {
    std::error_code error;
    for (const auto& process : std::filesystem::directory_iterator("/proc", error)) {
        std::ifstream file(process.path() / "comm");
        std::string name;
        if (std::getline(file, name) && name == program) return true;
    }
    return false;
}

// Xfce: the settings daemon holds one number for each panel; 2 is "always".

bool isXfceRunning(const BusConnection& bus) { return bus.hasOwner("org.xfce.Panel"); }

std::vector<HiddenPanelSetting> readXfce(const BusConnection& bus) {
    const auto all = bus.call(kXfconf, kXfconfPath, kXfconf, "GetAllProperties",
                              g_variant_new("(ss)", kXfceChannel, "/panels"));
    if (!all) return {};
    std::vector<HiddenPanelSetting> found;
    const GVariantHolder properties(g_variant_get_child_value(all.value().get(), 0));
    GVariantIter each;
    g_variant_iter_init(&each, properties.get());
    const char* key = nullptr;
    GVariant* held = nullptr;
    std::vector<std::string> panels;
    std::vector<HiddenPanelSetting> set;
    while (g_variant_iter_next(&each, "{&sv}", &key, &held) != FALSE) {
        const GVariantHolder value(held);
        const std::string name(key);
        // "/panels/panel-1/size" tells that there is a panel of that name.
        const auto end = name.find('/', std::string_view("/panels/panel-").size());
        if (!name.starts_with("/panels/panel-") || end == std::string::npos) continue;
        const auto behaviour = name.substr(0, end) + "/autohide-behavior";
        const bool isBehaviour =
            name == behaviour && g_variant_is_of_type(value.get(), G_VARIANT_TYPE_UINT32) != FALSE;
        const auto text = isBehaviour ? std::to_string(g_variant_get_uint32(value.get())) : "0";
        auto known = std::find_if(found.begin(), found.end(),
                                  [&](const auto& setting) { return setting.key == behaviour; });
        if (known == found.end())
            found.push_back({"xfce4-panel", behaviour, text});
        else if (isBehaviour)
            known->before = text;
    }
    return found;
}

bool writeXfce(const BusConnection& bus, const std::string& key, const std::string& value) {
    const auto number = static_cast<guint32>(std::strtoul(value.c_str(), nullptr, 10));
    return bus
        .call(kXfconf, kXfconfPath, kXfconf, "SetProperty",
              g_variant_new("(ssv)", kXfceChannel, key.c_str(), g_variant_new_uint32(number)))
        .ok();
}

// Plasma: its shell runs scripts; the panels are told apart by their ids.

bool isPlasmaRunning(const BusConnection& bus) { return bus.hasOwner(kPlasma); }

Result<std::string> runInPlasma(const BusConnection& bus, const std::string& script) {
    const auto answer = bus.call(kPlasma, "/PlasmaShell", "org.kde.PlasmaShell", "evaluateScript",
                                 g_variant_new("(s)", script.c_str()));
    if (!answer) return Failure{answer.error()};
    const char* text = nullptr;
    g_variant_get(answer.value().get(), "(&s)", &text);
    return lent(text);
}

std::vector<HiddenPanelSetting> readPlasma(const BusConnection& bus) {
    const auto listed =
        runInPlasma(bus, "panels().forEach(p => print(p.id + ' ' + p.hiding + '\\n'))");
    if (!listed) return {};
    std::vector<HiddenPanelSetting> found;
    std::istringstream lines(listed.value());
    for (std::string id, hiding; lines >> id >> hiding;)
        found.push_back({"plasmashell", id, hiding});
    return found;
}

bool writePlasma(const BusConnection& bus, const std::string& key, const std::string& value) {
    return runInPlasma(bus, "panelById(" + key + ").hiding = '" + value + "'").ok();
}

// Panels whose settings lie in the settings database of GNOME and its relatives.

/// Null when the schema is not installed; the library would end the program.
GObjectHolder<GSettings> openSettings(const char* schema, const char* path) {
    auto* source = g_settings_schema_source_get_default();
    auto* found =
        source == nullptr ? nullptr : g_settings_schema_source_lookup(source, schema, TRUE);
    if (found == nullptr) return nullptr;
    GObjectHolder<GSettings> settings(g_settings_new_full(found, nullptr, path));
    g_settings_schema_unref(found);
    return settings;
}

std::vector<HiddenPanelSetting> readSetting(const char* panel, const char* schema,
                                            const std::string& path, const char* key) {
    const auto settings = openSettings(schema, path.empty() ? nullptr : path.c_str());
    if (settings == nullptr) return {};
    const GVariantHolder value(g_settings_get_value(settings.get(), key));
    return {{panel, path, given(g_variant_print(value.get(), TRUE))}};
}

bool writeSetting(const char* schema, const std::string& path, const char* key,
                  const std::string& value) {
    const auto settings = openSettings(schema, path.empty() ? nullptr : path.c_str());
    if (settings == nullptr) return false;
    const GVariantHolder parsed(g_variant_parse(nullptr, value.c_str(), nullptr, nullptr, nullptr));
    if (parsed == nullptr) return false;
    const bool isWritten = g_settings_set_value(settings.get(), key, parsed.get()) != FALSE;
    g_settings_sync();
    return isWritten;
}

constexpr const char* kPlankSchema = "net.launchpad.plank.dock.settings";
constexpr const char* kPlankPath = "/net/launchpad/plank/docks/dock1/";
constexpr const char* kMateSchema = "org.mate.panel.toplevel";

std::vector<HiddenPanelSetting> readMate(const BusConnection& /*bus*/) {
    const auto panel = openSettings("org.mate.panel", nullptr);
    if (panel == nullptr) return {};
    std::vector<HiddenPanelSetting> found;
    gchar** ids = g_settings_get_strv(panel.get(), "toplevel-id-list");
    for (gchar** id = ids; *id != nullptr; ++id) {
        const auto one =
            readSetting("mate-panel", kMateSchema,
                        "/org/mate/panel/toplevels/" + std::string(*id) + "/", "auto-hide");
        found.insert(found.end(), one.begin(), one.end());
    }
    g_strfreev(ids);
    return found;
}

constexpr auto kPrograms = std::to_array<PanelProgram>({
    {"xfce4-panel", isXfceRunning, readXfce, "2", writeXfce},
    {"plasmashell", isPlasmaRunning, readPlasma, "autohide", writePlasma},
    {"mate-panel", [](const BusConnection&) { return isProgramRunning("mate-panel"); }, readMate,
     "true",
     [](const BusConnection&, const std::string& key, const std::string& value) {
         return writeSetting(kMateSchema, key, "auto-hide", value);
     }},
    {"plank", [](const BusConnection&) { return isProgramRunning("plank"); },
     [](const BusConnection&) {
         return readSetting("plank", kPlankSchema, kPlankPath, "hide-mode");
     },
     "'auto'",
     [](const BusConnection&, const std::string& key, const std::string& value) {
         return writeSetting(kPlankSchema, key, "hide-mode", value);
     }},
});

}  // namespace

std::span<const PanelProgram> panelPrograms() { return kPrograms; }

}  // namespace orvel::x11
