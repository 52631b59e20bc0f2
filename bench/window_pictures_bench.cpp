// What a preview of a window costs in a real session: its picture, and the list that it is found
// in. The numbers are those of an X server without a graphics card.

#include "platform/qt/qt_run_loop.hpp"
#include "platform/x11/x11_services.hpp"
#include "platform/x11/x11_window_images.hpp"
#include "tests/session/own_home.hpp"
#include "tools/rig/embedded_desktop.hpp"
#include "tools/rig/plain_windows.hpp"
#include "tools/rig/rig_error.hpp"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orvel {
namespace {

/// A desktop with windows of one application, and the services that look at them.
class Session {
public:
    explicit Session(const std::vector<rig::PlainWindows::Window>& windows)
        : app_(desktop_.environment(), desktop_.x()) {
        x11::ServiceOptions options;
        options.display = desktop_.server().display();
        auto services = x11::X11Services::open(runLoop_, options);
        if (!services) throw rig::RigError(services.error());
        services_ = std::move(services).value();
        images_ = std::make_unique<x11::X11WindowImages>(runLoop_, services_->server(),
                                                         services_->clients());
        for (const auto& window : windows)
            numbers_.push_back(static_cast<WindowNumber>(app_.open(window)));
        const bool areKnown = rig::pollUntil([this] {
            services_->catchUp();
            return list().size() == numbers_.size() && capture(numbers_.back()).has_value();
        });
        if (!areKnown) throw rig::RigError("the windows are not known");
    }

    [[nodiscard]] WindowNumber lastWindow() const { return numbers_.back(); }
    std::optional<Picture> capture(WindowNumber number) { return images_->capture(number); }
    std::vector<WindowInfo> list() { return services_->windowList().windows(WindowListScope::all); }

private:
    rig::EmbeddedDesktop desktop_;
    rig::PlainWindows app_;
    qt::QtRunLoop runLoop_;
    std::unique_ptr<x11::X11Services> services_;
    std::unique_ptr<x11::X11WindowImages> images_;
    std::vector<WindowNumber> numbers_;
};

void oneWindowPicture(benchmark::State& state) {
    Session session({{.title = "window",
                      .width = static_cast<int>(state.range(0)),
                      .height = static_cast<int>(state.range(1))}});
    for (auto step : state) {
        if (!session.capture(session.lastWindow())) state.SkipWithError("no picture");
    }
}
BENCHMARK(oneWindowPicture)
    ->Args({400, 300})
    ->Args({1280, 800})
    ->Args({1900, 1000})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

void oneWindowList(benchmark::State& state) {
    const auto count = static_cast<std::size_t>(state.range(0));
    Session session{std::vector<rig::PlainWindows::Window>(count)};
    for (auto step : state) {
        if (session.list().size() != count) state.SkipWithError("windows are missing");
    }
}
BENCHMARK(oneWindowList)->Arg(1)->Arg(20)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace orvel
