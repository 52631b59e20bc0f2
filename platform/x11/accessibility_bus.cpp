#include "platform/x11/accessibility_bus.hpp"

#include <algorithm>
#include <utility>

namespace orvel::x11 {

namespace {

constexpr const char* kService = "org.a11y.Bus";
constexpr const char* kServicePath = "/org/a11y/bus";
constexpr const char* kRegistry = "org.a11y.atspi.Registry";
constexpr const char* kRegistryPath = "/org/a11y/atspi/registry";
constexpr const char* kFocusEvent = "object:state-changed:focused";
constexpr const char* kObjectEvents = "org.a11y.atspi.Event.Object";
constexpr const char* kFocusRule =
    "type='signal',interface='org.a11y.atspi.Event.Object',member='StateChanged',arg0='focused'";
const AccessibleId kBus{"org.freedesktop.DBus", "/org/freedesktop/DBus"};

Result<std::string> busAddress() {
    const auto session = BusConnection::open(Bus::session);
    if (!session) return Failure{session.error()};
    const auto reply =
        session.value().call(kService, kServicePath, kService, "GetAddress", nullptr);
    if (!reply) return Failure{reply.error()};
    const char* address = nullptr;
    g_variant_get(reply.value().get(), "(&s)", &address);
    return lent(address);
}

/// Nobody answered: in time, or at all.
bool isSilence(const GError& error) {
    if (error.domain == G_IO_ERROR) return true;
    return error.domain == G_DBUS_ERROR &&
           (error.code == G_DBUS_ERROR_NO_REPLY || error.code == G_DBUS_ERROR_TIMEOUT ||
            error.code == G_DBUS_ERROR_TIMED_OUT || error.code == G_DBUS_ERROR_DISCONNECTED);
}

bool isFocusChange(GDBusMessage* message) {
    return g_dbus_message_get_message_type(message) == G_DBUS_MESSAGE_TYPE_SIGNAL &&
           lent(g_dbus_message_get_interface(message)) == kObjectEvents &&
           lent(g_dbus_message_get_arg0(message)) == "focused";
}

void deleteTold(gpointer told) { delete static_cast<AccessibilityBus::FocusTold*>(told); }

}  // namespace

Result<std::unique_ptr<AccessibilityBus>> AccessibilityBus::open(FocusTold told) {
    const auto address = busAddress();
    if (!address) return Failure{address.error()};
    auto connection = BusConnection::openAddress(address.value());
    if (!connection) return Failure{connection.error()};
    std::unique_ptr<AccessibilityBus> bus(
        new AccessibilityBus(std::move(connection).value(), std::move(told)));
    if (const auto listening = bus->listen(); !listening) return Failure{listening.error()};
    return bus;
}

AccessibilityBus::AccessibilityBus(BusConnection connection, FocusTold told)
    : connection_(std::move(connection)),
      filter_(g_dbus_connection_add_filter(connection_.raw(), receive,
                                           new FocusTold(std::move(told)), deleteTold)) {}

AccessibilityBus::~AccessibilityBus() {
    g_dbus_connection_remove_filter(connection_.raw(), filter_);
}

Result<> AccessibilityBus::listen() {
    const auto heard = connection_.call(kBus.name.c_str(), kBus.path.c_str(), kBus.name.c_str(),
                                        "AddMatch", g_variant_new("(s)", kFocusRule));
    if (!heard) return Failure{heard.error()};
    // Applications stay silent until somebody says that he listens.
    const auto asked = connection_.call(
        kRegistry, kRegistryPath, kRegistry, "RegisterEvent",
        g_variant_new("(sass)", kFocusEvent, static_cast<GVariantBuilder*>(nullptr), ""));
    if (asked) return {};
    const auto askedOld = connection_.call(kRegistry, kRegistryPath, kRegistry, "RegisterEvent",
                                           g_variant_new("(s)", kFocusEvent));
    if (!askedOld) return Failure{askedOld.error()};
    return {};
}

GDBusMessage* AccessibilityBus::receive(GDBusConnection* /*connection*/, GDBusMessage* message,
                                        gboolean isIncoming, gpointer told) {
    if (isIncoming == FALSE || !isFocusChange(message)) return message;
    GVariant* body = g_dbus_message_get_body(message);
    if (g_variant_n_children(body) < 2) return message;
    const GVariantHolder detail(g_variant_get_child_value(body, 1));
    if (!g_variant_is_of_type(detail.get(), G_VARIANT_TYPE_INT32)) return message;
    const AccessibleId object{lent(g_dbus_message_get_sender(message)),
                              lent(g_dbus_message_get_path(message))};
    (*static_cast<FocusTold*>(told))(object, g_variant_get_int32(detail.get()) != 0);
    return message;
}

BusAnswer AccessibilityBus::call(const AccessibleId& object, const char* interface,
                                 const char* method, GVariant* parameters,
                                 Deadline deadline) const {
    const GVariantHolder owned(parameters == nullptr ? nullptr : g_variant_ref_sink(parameters));
    const auto left = timeLeft(deadline);
    if (left == Milliseconds::zero()) return {};
    GError* problem = nullptr;
    GVariantHolder reply(g_dbus_connection_call_sync(
        connection_.raw(), object.name.c_str(), object.path.c_str(), interface, method, owned.get(),
        nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, static_cast<gint>(left.count()), nullptr,
        &problem));
    const GErrorHolder error(problem);
    const bool isAnswered = error == nullptr || !isSilence(*error);
    return {std::move(reply), isAnswered};
}

BusAnswer AccessibilityBus::askBus(const char* method, GVariant* parameters,
                                   Deadline deadline) const {
    return call(kBus, kBus.name.c_str(), method, parameters, deadline);
}

std::string AccessibilityBus::ownName() const {
    return lent(g_dbus_connection_get_unique_name(connection_.raw()));
}

bool AccessibilityBus::isOpen() const {
    return g_dbus_connection_is_closed(connection_.raw()) == FALSE;
}

std::optional<bool> isAccessibilitySwitchedOn() {
    const auto session = BusConnection::open(Bus::session);
    if (!session) return std::nullopt;
    const auto reply =
        session.value().call(kService, kServicePath, "org.freedesktop.DBus.Properties", "Get",
                             g_variant_new("(ss)", "org.a11y.Status", "IsEnabled"));
    if (!reply || !g_variant_is_of_type(reply.value().get(), G_VARIANT_TYPE("(v)")))
        return std::nullopt;
    GVariant* boxed = nullptr;
    g_variant_get(reply.value().get(), "(v)", &boxed);
    const GVariantHolder value(boxed);
    if (!g_variant_is_of_type(value.get(), G_VARIANT_TYPE_BOOLEAN)) return std::nullopt;
    return g_variant_get_boolean(value.get()) != FALSE;
}

}  // namespace orvel::x11
