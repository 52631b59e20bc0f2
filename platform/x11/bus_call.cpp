#include "platform/x11/bus_call.hpp"

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <system_error>

namespace orvel::x11 {

namespace {

constexpr const char* kBusName = "org.freedesktop.DBus";
constexpr const char* kBusPath = "/org/freedesktop/DBus";

struct ContextDeleter {
    void operator()(GMainContext* context) const { g_main_context_unref(context); }
};

/// An asynchronous call of the library that this thread waits for, with an end in any case.
class BoundedWait {
public:
    explicit BoundedWait(std::chrono::milliseconds limit) {
        g_main_context_push_thread_default(context_.get());
        timeout_ = g_timeout_source_new(static_cast<guint>(limit.count()));
        g_source_set_callback(timeout_, cancel, cancellable_.get(), nullptr);
        g_source_attach(timeout_, context_.get());
    }
    ~BoundedWait() {
        g_source_destroy(timeout_);
        g_source_unref(timeout_);
        g_main_context_pop_thread_default(context_.get());
    }
    BoundedWait(const BoundedWait&) = delete;
    BoundedWait& operator=(const BoundedWait&) = delete;

    [[nodiscard]] GCancellable* cancellable() const { return cancellable_.get(); }

    static void done(GObject*, GAsyncResult* result, gpointer wait) {
        static_cast<BoundedWait*>(wait)->result_.reset(G_ASYNC_RESULT(g_object_ref(result)));
    }

    GAsyncResult* result() {
        while (result_ == nullptr) g_main_context_iteration(context_.get(), TRUE);
        return result_.get();
    }

private:
    static gboolean cancel(gpointer cancellable) {
        g_cancellable_cancel(static_cast<GCancellable*>(cancellable));
        return G_SOURCE_REMOVE;
    }

    std::unique_ptr<GMainContext, ContextDeleter> context_{g_main_context_new()};
    GObjectHolder<GCancellable> cancellable_{g_cancellable_new()};
    GSource* timeout_ = nullptr;
    GObjectHolder<GAsyncResult> result_;
};

/// Asking the library would start a bus where the session has none.
bool hasSessionBus() {
    const char* address = std::getenv("DBUS_SESSION_BUS_ADDRESS");
    if (address != nullptr && *address != '\0') return true;
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    std::error_code error;
    return runtime != nullptr && std::filesystem::exists(std::string(runtime) + "/bus", error);
}

/// The error without the prefix by which the library passes the remote name on.
std::string remoteMessage(GError* error) {
    const GErrorHolder owner(error);
    if (error != nullptr) g_dbus_error_strip_remote_error(error);
    return messageOf(owner);
}

}  // namespace

void outliveBuses() {
    for (const auto bus : {G_BUS_TYPE_SESSION, G_BUS_TYPE_SYSTEM}) {
        if (bus == G_BUS_TYPE_SESSION && !hasSessionBus()) continue;
        auto* shared = g_bus_get_sync(bus, nullptr, nullptr);
        // The reference is kept for good: a connection made anew would have the habit again.
        if (shared != nullptr) g_dbus_connection_set_exit_on_close(shared, FALSE);
    }
}

Result<BusConnection> BusConnection::open(Bus bus, std::chrono::milliseconds limit) {
    if (bus == Bus::session && !hasSessionBus()) return Failure{"this session has no message bus"};
    GError* problem = nullptr;
    const auto address = given(g_dbus_address_get_for_bus_sync(
        bus == Bus::system ? G_BUS_TYPE_SYSTEM : G_BUS_TYPE_SESSION, nullptr, &problem));
    const GErrorHolder error(problem);
    if (address.empty()) return Failure{messageOf(error)};
    return openAddress(address, limit);
}

Result<BusConnection> BusConnection::openAddress(const std::string& address,
                                                 std::chrono::milliseconds limit) {
    BoundedWait wait(limit);
    g_dbus_connection_new_for_address(
        address.c_str(),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, wait.cancellable(), BoundedWait::done, &wait);
    GError* problem = nullptr;
    auto* connection = g_dbus_connection_new_for_address_finish(wait.result(), &problem);
    if (connection == nullptr) return Failure{remoteMessage(problem)};
    return BusConnection(connection);
}

Result<GVariantHolder> BusConnection::call(const char* name, const char* path,
                                           const char* interface, const char* method,
                                           GVariant* parameters,
                                           std::chrono::milliseconds limit) const {
    GError* problem = nullptr;
    GVariantHolder answer(g_dbus_connection_call_sync(
        connection_.get(), name, path, interface, method, parameters, nullptr,
        G_DBUS_CALL_FLAGS_NONE, static_cast<gint>(limit.count()), nullptr, &problem));
    if (answer == nullptr) return Failure{remoteMessage(problem)};
    return answer;
}

bool BusConnection::hasOwner(const char* name) const {
    const auto answer =
        call(kBusName, kBusPath, kBusName, "NameHasOwner", g_variant_new("(s)", name));
    if (!answer) return false;
    gboolean hasOwner = FALSE;
    g_variant_get(answer.value().get(), "(b)", &hasOwner);
    return hasOwner != FALSE;
}

}  // namespace orvel::x11
