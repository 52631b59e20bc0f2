#include "platform/x11/password_focus.hpp"

#include "platform/x11/bus_call.hpp"
#include "platform/x11/gio_thread.hpp"

#include <atomic>
#include <optional>
#include <string>
#include <utility>

namespace orvel::x11 {

namespace {

constexpr const char* kRegistry = "org.a11y.atspi.Registry";
constexpr const char* kRegistryPath = "/org/a11y/atspi/registry";
constexpr guint32 kPasswordTextRole = 40;
constexpr int kRoleLimitMs = 500;

Result<std::string> accessibilityAddress() {
    const auto session = BusConnection::open(Bus::session);
    if (!session) return Failure{session.error()};
    const auto reply = session.value().call("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus",
                                            "GetAddress", nullptr);
    if (!reply) return Failure{reply.error()};
    const char* address = nullptr;
    g_variant_get(reply.value().get(), "(&s)", &address);
    return lent(address);
}

}  // namespace

struct PasswordFocus::Impl {
    Impl();
    ~Impl();

    static void focusChanged(GDBusConnection* teller, const char* sender, const char* path,
                             const char* interface, const char* signal, GVariant* parameters,
                             void* self);
    static void roleTold(GObject* teller, GAsyncResult* result, void* question);

    void listen();
    void askForRole(GDBusConnection* teller, const char* sender, const char* path);

    /// One question for a role; only the answer to the last one counts.
    struct Question {
        Impl* asker;
        unsigned number;
    };

    std::atomic<bool> isPassword{false};
    std::optional<BusConnection> bus;
    GObjectHolder<GCancellable> ended{g_cancellable_new()};
    unsigned subscription = 0;
    unsigned lastQuestion = 0;
    std::string focused;
    GioThread gio;
};

PasswordFocus::Impl::Impl() {
    gio.post([this] { listen(); });
}

PasswordFocus::Impl::~Impl() {
    gio.run([this] {
        g_cancellable_cancel(ended.get());
        if (subscription != 0) g_dbus_connection_signal_unsubscribe(bus->raw(), subscription);
        bus.reset();
    });
}

void PasswordFocus::Impl::listen() {
    const auto address = accessibilityAddress();
    if (!address) return;
    auto opened = BusConnection::openAddress(address.value());
    if (!opened) return;
    bus.emplace(std::move(opened).value());
    subscription = g_dbus_connection_signal_subscribe(
        bus->raw(), nullptr, "org.a11y.atspi.Event.Object", "StateChanged", nullptr, "focused",
        G_DBUS_SIGNAL_FLAGS_NONE, focusChanged, this, nullptr);
    // Applications stay silent until somebody says that he listens.
    const auto asked = bus->call(kRegistry, kRegistryPath, kRegistry, "RegisterEvent",
                                 g_variant_new("(sass)", "object:state-changed:focused",
                                               static_cast<GVariantBuilder*>(nullptr), ""));
    if (asked) return;
    static_cast<void>(bus->call(kRegistry, kRegistryPath, kRegistry, "RegisterEvent",
                                g_variant_new("(s)", "object:state-changed:focused")));
}

void PasswordFocus::Impl::focusChanged(GDBusConnection* teller, const char* sender,
                                       const char* path, const char* /*interface*/,
                                       const char* /*signal*/, GVariant* parameters, void* self) {
    auto& focus = *static_cast<Impl*>(self);
    if (g_variant_n_children(parameters) < 2) return;
    const GVariantHolder detail(g_variant_get_child_value(parameters, 1));
    if (!g_variant_is_of_type(detail.get(), G_VARIANT_TYPE_INT32)) return;
    const std::string object = lent(sender) + lent(path);
    if (g_variant_get_int32(detail.get()) != 0) {
        focus.focused = object;
        focus.askForRole(teller, sender, path);
    } else if (object == focus.focused) {
        ++focus.lastQuestion;
        focus.isPassword = false;
    }
}

void PasswordFocus::Impl::askForRole(GDBusConnection* teller, const char* sender,
                                     const char* path) {
    isPassword = true;
    auto question = std::make_unique<Question>(Question{this, ++lastQuestion});
    g_dbus_connection_call(teller, sender, path, "org.a11y.atspi.Accessible", "GetRole", nullptr,
                           nullptr, G_DBUS_CALL_FLAGS_NONE, kRoleLimitMs, ended.get(), roleTold,
                           question.release());
}

void PasswordFocus::Impl::roleTold(GObject* teller, GAsyncResult* result, void* question) {
    const std::unique_ptr<Question> asked(static_cast<Question*>(question));
    GError* problem = nullptr;
    const GVariantHolder reply(
        g_dbus_connection_call_finish(G_DBUS_CONNECTION(teller), result, &problem));
    const GErrorHolder error(problem);
    // The asker may be gone when its questions are called off.
    if (g_error_matches(problem, G_IO_ERROR, G_IO_ERROR_CANCELLED)) return;
    Impl& focus = *asked->asker;
    if (asked->number != focus.lastQuestion) return;
    guint32 role = 0;
    if (reply != nullptr && g_variant_is_of_type(reply.get(), G_VARIANT_TYPE("(u)"))) {
        g_variant_get(reply.get(), "(u)", &role);
    }
    focus.isPassword = role == kPasswordTextRole;
}

PasswordFocus::PasswordFocus() : impl_(std::make_unique<Impl>()) {}

PasswordFocus::~PasswordFocus() = default;

bool PasswordFocus::isKnown() const { return impl_->isPassword; }

}  // namespace orvel::x11
