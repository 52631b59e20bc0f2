#include "platform/x11/name_watch.hpp"

#include <utility>

namespace orvel::x11 {

NameWatch::NameWatch(const BusConnection& bus, const char* name,
                     std::function<void(const std::string&)> appeared,
                     std::function<void()> vanished)
    : appeared_(std::move(appeared)),
      vanished_(std::move(vanished)),
      watch_(g_bus_watch_name_on_connection(
          bus.raw(), name, G_BUS_NAME_WATCHER_FLAGS_NONE,
          +[](GDBusConnection*, const char*, const char* owner, gpointer self) {
              static_cast<NameWatch*>(self)->appeared_(lent(owner));
          },
          +[](GDBusConnection*, const char*, gpointer self) {
              static_cast<NameWatch*>(self)->vanished_();
          },
          this, nullptr)) {}

NameWatch::~NameWatch() { g_bus_unwatch_name(watch_); }

}  // namespace orvel::x11
