#include "platform/x11/bus_peer.hpp"

#include <memory>
#include <utility>

namespace orvel::x11 {

namespace {

struct Listener {
    std::string type;
    BusPeer::Told told;
};

const char* orNull(const std::string& text) { return text.empty() ? nullptr : text.c_str(); }

void answer(GObject* bus, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<BusPeer::Answered> answered(static_cast<BusPeer::Answered*>(data));
    GError* problem = nullptr;
    GVariantHolder reply(g_dbus_connection_call_finish(G_DBUS_CONNECTION(bus), result, &problem));
    const GErrorHolder error(problem);
    // Who asked is gone.
    if (g_error_matches(problem, G_IO_ERROR, G_IO_ERROR_CANCELLED)) return;
    const bool isAnswered = reply != nullptr || g_dbus_error_is_remote_error(problem) != FALSE;
    (*answered)({std::move(reply), isAnswered});
}

void hear(GDBusConnection* /*bus*/, const char* /*sender*/, const char* /*path*/,
          const char* /*interface*/, const char* /*signal*/, GVariant* parameters, gpointer data) {
    const auto& listener = *static_cast<Listener*>(data);
    if (g_variant_check_format_string(parameters, listener.type.c_str(), FALSE) != FALSE)
        listener.told(parameters);
}

void forget(gpointer data) { delete static_cast<Listener*>(data); }

}  // namespace

BusPeer::BusPeer(const BusConnection& bus, const char* name, std::string path)
    : bus_(bus.raw()), name_(lent(name)), path_(std::move(path)) {}

BusPeer::~BusPeer() {
    g_cancellable_cancel(ended_.get());
    for (const unsigned subscription : subscriptions_)
        g_dbus_connection_signal_unsubscribe(bus_, subscription);
}

void BusPeer::call(const char* interface, const char* method, GVariant* parameters,
                   const char* answerType, std::chrono::milliseconds limit,
                   Answered answered) const {
    auto kept = std::make_unique<Answered>(std::move(answered));
    g_dbus_connection_call(bus_, orNull(name_), path_.c_str(), interface, method, parameters,
                           G_VARIANT_TYPE(answerType), G_DBUS_CALL_FLAGS_NO_AUTO_START,
                           static_cast<gint>(limit.count()), ended_.get(), answer, kept.release());
}

void BusPeer::onSignal(const char* interface, const char* signal, const char* type, Told told) {
    auto listener = std::make_unique<Listener>(Listener{type, std::move(told)});
    subscriptions_.push_back(g_dbus_connection_signal_subscribe(
        bus_, orNull(name_), interface, signal, path_.c_str(), nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
        hear, listener.release(), forget));
}

}  // namespace orvel::x11
