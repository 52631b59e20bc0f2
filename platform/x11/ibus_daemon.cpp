#include "platform/x11/ibus_daemon.hpp"

#include "platform/x11/layout_symbols.hpp"
#include "platform/x11/xdg_folders.hpp"

#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>
#include <utility>

namespace orvel::x11 {

namespace {

constexpr const char* kName = "org.freedesktop.IBus";
constexpr const char* kPath = "/org/freedesktop/IBus";
constexpr const char* kProperties = "org.freedesktop.DBus.Properties";
constexpr const char* kBus = "org.freedesktop.DBus";
constexpr const char* kSchema = "org.freedesktop.ibus.general";
constexpr const char* kChosenKey = "preload-engines";
constexpr std::string_view kPrefix = "ibus:";
constexpr std::string_view kLayoutPrefix = "xkb:";

/// Fields of a description of an engine on the bus.
enum DescriptionField : gsize {
    kEngineName = 2,
    kLongName = 3,
    kLanguage = 5,
    kLayout = 9,
    kVariant = 14,
    kFieldCount
};

std::string field(GVariant* description, DescriptionField place) {
    const GVariantHolder value(g_variant_get_child_value(description, place));
    if (!g_variant_is_of_type(value.get(), G_VARIANT_TYPE_STRING)) return {};
    return lent(g_variant_get_string(value.get(), nullptr));
}

/// What is inside, however often it was wrapped.
GVariantHolder unwrapped(GVariant* value) {
    GVariantHolder inner(g_variant_ref(value));
    while (g_variant_is_of_type(inner.get(), G_VARIANT_TYPE_VARIANT))
        inner.reset(g_variant_get_variant(inner.get()));
    return inner;
}

std::optional<InputMethodEngine> engineOf(GVariant* wrapped) {
    const GVariantHolder description = unwrapped(wrapped);
    if (!g_variant_is_of_type(description.get(), G_VARIANT_TYPE_TUPLE) ||
        g_variant_n_children(description.get()) < kFieldCount) {
        return std::nullopt;
    }
    const auto name = field(description.get(), kEngineName);
    const auto language = field(description.get(), kLanguage);
    const bool isLayout = name.starts_with(kLayoutPrefix);
    return InputMethodEngine{
        .id = std::string(kPrefix) + name,
        .name = field(description.get(), kLongName),
        .language = language,
        // What is no layout composes.
        .isAsciiCapable = isLayout ? layoutTypesAscii(field(description.get(), kLayout),
                                                      field(description.get(), kVariant))
                                   : language == "en"};
}

/// The address that the daemon of that process has left in one of its files; empty for none.
std::string addressOf(std::uint32_t process) {
    constexpr std::string_view kAddress = "IBUS_ADDRESS=";
    const std::string wanted = "IBUS_DAEMON_PID=" + std::to_string(process);
    std::error_code error;
    const std::filesystem::directory_iterator files(configFolder() + "/ibus/bus", error);
    for (const auto& file : files) {
        std::ifstream in(file.path());
        std::string address;
        bool isIts = false;
        for (std::string line; std::getline(in, line);) {
            if (line.starts_with(kAddress)) address = line.substr(kAddress.size());
            isIts = isIts || line == wanted;
        }
        if (isIts) return address;
    }
    return {};
}

GSettings* settingsOfIbus() {
    GSettingsSchemaSource* source = g_settings_schema_source_get_default();
    if (source == nullptr) return nullptr;
    GSettingsSchema* schema = g_settings_schema_source_lookup(source, kSchema, TRUE);
    // Asking the library for settings that are not installed would end the program.
    if (schema == nullptr) return nullptr;
    const bool hasKey = g_settings_schema_has_key(schema, kChosenKey) != FALSE;
    GSettings* settings = hasKey ? g_settings_new_full(schema, nullptr, nullptr) : nullptr;
    g_settings_schema_unref(schema);
    return settings;
}

GVariant* namesVariant(const std::vector<std::string>& names) {
    GVariantBuilder builder;
    g_variant_builder_init(&builder, G_VARIANT_TYPE("as"));
    for (const auto& name : names) g_variant_builder_add(&builder, "s", name.c_str());
    return g_variant_new("(as)", &builder);
}

}  // namespace

ChosenEngines::ChosenEngines(std::function<void()> changed)
    : changed_(std::move(changed)), settings_(settingsOfIbus()) {
    if (settings_ == nullptr) return;
    handler_ =
        g_signal_connect_swapped(settings_.get(), "changed::preload-engines",
                                 G_CALLBACK(+[](ChosenEngines* self) { self->changed_(); }), this);
    // Changes of a key that was never read are not told.
    static_cast<void>(names());
}

ChosenEngines::~ChosenEngines() {
    if (settings_ != nullptr) g_signal_handler_disconnect(settings_.get(), handler_);
}

std::vector<std::string> ChosenEngines::names() const {
    std::vector<std::string> names;
    if (settings_ == nullptr) return names;
    char** list = g_settings_get_strv(settings_.get(), kChosenKey);
    for (char** each = list; *each != nullptr; ++each) names.emplace_back(*each);
    g_strfreev(list);
    return names;
}

IbusDaemon::IbusDaemon(const BusConnection& session, InputMethodBoard& board)
    : board_(board),
      sessionBus_(session, kBus, "/org/freedesktop/DBus"),
      chosen_([this] {
          if (talk_.isOn()) askEngines();
      }),
      talk_(DaemonKind::ibus, board),
      watch_(
          session, kName, [this](const std::string& owner) { appeared(owner); },
          [this] { vanished(); }) {}

void IbusDaemon::appeared(const std::string& owner) {
    sessionBus_.call(kBus, "GetConnectionUnixProcessID", g_variant_new("(s)", owner.c_str()), "(u)",
                     kDaemonLimit, [this](const BusAnswer& answer) {
                         if (answer.reply == nullptr) return;
                         g_variant_get(answer.reply.get(), "(u)", &process_);
                         connect();
                     });
}

void IbusDaemon::vanished() {
    process_ = 0;
    talk_.end();
    bus_.reset();
    board_.setPresence(DaemonKind::ibus, DaemonPresence::absent);
}

void IbusDaemon::connect() {
    talk_.end();
    talk_.noteTry();
    const auto address = addressOf(process_);
    auto opened = address.empty() ? Result<BusConnection>(Failure{"no address"})
                                  : BusConnection::openAddress(address, kDaemonLimit);
    if (!opened) return talk_.fallSilent();
    bus_.emplace(std::move(opened).value());
    BusPeer& peer = talk_.begin(*bus_, kName, kPath);
    peer.onSignal(kName, "GlobalEngineChanged", "(s)", [this](GVariant* parameters) {
        const char* engine = nullptr;
        g_variant_get(parameters, "(&s)", &engine);
        setCurrent(engine, talk_.carriedOut());
    });
    askEngines();
}

void IbusDaemon::askEngines() {
    talk_.ask(kName, "GetEnginesByNames", namesVariant(chosen_.names()), "(av)",
              [this](GVariant* all) {
                  state_.engines.clear();
                  if (all != nullptr) {
                      const GVariantHolder list(g_variant_get_child_value(all, 0));
                      for (gsize place = 0; place < g_variant_n_children(list.get()); ++place) {
                          const GVariantHolder each(g_variant_get_child_value(list.get(), place));
                          if (auto engine = engineOf(each.get())) state_.engines.push_back(*engine);
                      }
                  }
                  askCurrent();
              });
}

void IbusDaemon::askCurrent() {
    talk_.ask(kProperties, "Get", g_variant_new("(ss)", kName, "GlobalEngine"), "(v)",
              [this, selection = talk_.carriedOut()](GVariant* answer) {
                  // Until an engine was selected for the first time there is none.
                  std::string name;
                  if (answer != nullptr) {
                      const GVariantHolder value(g_variant_get_child_value(answer, 0));
                      const auto engine = engineOf(value.get());
                      if (engine) name = engine->id.substr(kPrefix.size());
                  }
                  setCurrent(name, selection);
              });
}

void IbusDaemon::setCurrent(const std::string& engine, std::uint64_t selection) {
    state_.current = engine.empty() ? std::string() : std::string(kPrefix) + engine;
    if (engine.empty() && !state_.engines.empty()) state_.current = state_.engines.front().id;
    board_.tell(DaemonKind::ibus, state_, selection);
}

void IbusDaemon::select(const EngineSelection& selection) {
    talk_.select(selection, kName, "SetGlobalEngine", selection.engine.substr(kPrefix.size()),
                 [this] { askCurrent(); });
}

void IbusDaemon::refresh() {
    if (process_ == 0 || !talk_.isDueAgain()) return;
    if (!talk_.isOn()) return connect();
    askEngines();
}

}  // namespace orvel::x11
