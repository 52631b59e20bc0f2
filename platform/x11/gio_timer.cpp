#include "platform/x11/gio_timer.hpp"

#include <utility>

namespace orvel::x11 {

GioTimer::GioTimer(std::chrono::milliseconds delay, std::function<void()> task)
    : task_(std::move(task)), source_(g_timeout_source_new(static_cast<guint>(delay.count()))) {
    const auto run = +[](gpointer self) -> gboolean {
        // The task may end this very object.
        const auto due = static_cast<GioTimer*>(self)->task_;
        due();
        return G_SOURCE_REMOVE;
    };
    g_source_set_callback(source_, run, this, nullptr);
    g_source_attach(source_, g_main_context_get_thread_default());
}

GioTimer::~GioTimer() {
    g_source_destroy(source_);
    g_source_unref(source_);
}

}  // namespace orvel::x11
