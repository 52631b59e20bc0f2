#include "platform/x11/gio_thread.hpp"

#include "platform/x11/bus_call.hpp"

#include <future>
#include <gio/gio.h>
#include <thread>
#include <utility>

namespace orvel::x11 {

struct GioThread::Impl {
    GMainContext* context = g_main_context_new();
    GMainLoop* loop = g_main_loop_new(context, FALSE);
    std::thread thread;
};

namespace {

gboolean runWork(gpointer work) {
    (*static_cast<std::function<void()>*>(work))();
    return G_SOURCE_REMOVE;
}

void deleteWork(gpointer work) { delete static_cast<std::function<void()>*>(work); }

}  // namespace

GioThread::GioThread() : impl_(std::make_unique<Impl>()) {
    impl_->thread = std::thread([impl = impl_.get()] {
        g_main_context_push_thread_default(impl->context);
        outliveBuses();
        g_main_loop_run(impl->loop);
        g_main_context_pop_thread_default(impl->context);
    });
}

GioThread::~GioThread() {
    post([this] { g_main_loop_quit(impl_->loop); });
    impl_->thread.join();
    g_main_loop_unref(impl_->loop);
    g_main_context_unref(impl_->context);
}

void GioThread::post(std::function<void()> work) {
    GSource* source = g_idle_source_new();
    g_source_set_priority(source, G_PRIORITY_DEFAULT);
    g_source_set_callback(source, runWork, new std::function<void()>(std::move(work)), deleteWork);
    g_source_attach(source, impl_->context);
    g_source_unref(source);
}

void GioThread::run(const std::function<void()>& work) {
    std::promise<void> done;
    post([&] {
        work();
        done.set_value();
    });
    done.get_future().wait();
}

}  // namespace orvel::x11
