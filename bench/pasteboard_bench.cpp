// What a copy in another application costs: from the copy until its contents can be read here
// without waiting. The owner has them ready, so that the time is the server's and ours.

#include "platform/qt/qt_run_loop.hpp"
#include "platform/x11/x11_pasteboard.hpp"
#include "tests/session/own_home.hpp"
#include "tools/rig/clipboard_app.hpp"
#include "tools/rig/embedded_desktop.hpp"
#include "tools/rig/rig_error.hpp"

#include <benchmark/benchmark.h>

#include <chrono>
#include <ctime>
#include <fstream>
#include <poll.h>
#include <string>

namespace orvel {
namespace {

/// An application that copies one thing again and again, and the pasteboard that takes it in.
class Session {
public:
    Session(const std::string& target, const std::string& path) {
        owner_.tell("form " + target + ' ' + target + ' ' + path);
        copy();
    }

    Pasteboard& pasteboard() { return pasteboard_; }
    void copy() {
        const auto before = pasteboard_.changeCount();
        owner_.tell("own");
        constexpr std::timespec pause{0, 100'000};
        const auto deadline = std::chrono::steady_clock::now() + rig::kPatience;
        while (pasteboard_.changeCount() == before) {
            if (std::chrono::steady_clock::now() > deadline)
                throw rig::RigError("the copy is not seen");
            ::ppoll(nullptr, 0, &pause, nullptr);
        }
    }

    static std::string fileWith(const std::string& bytes) {
        const auto path = test::OwnHome::get().runtime() / "bench-text";
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }
    /// A picture as a screen shows it: smooth areas, edges and text.
    static std::string pictureOf4K() {
        const auto path = test::OwnHome::get().runtime() / "bench-picture.png";
        rig::runTool({"convert", "-size", "3840x2160", "gradient:#204060-#a0c0e0", "-fill", "white",
                      "-pointsize", "40", "-annotate", "+200+400", std::string(900, 'x'), path},
                     test::OwnHome::get().environment());
        return path;
    }

private:
    rig::EmbeddedDesktop desktop_;
    qt::QtRunLoop runLoop_;
    x11::X11Pasteboard pasteboard_{runLoop_, desktop_.server().display()};
    rig::ClipboardApp owner_{rig::ClipboardApp::Kind::plain, desktop_.environment()};
};

void captureOfText(benchmark::State& state) {
    const std::string text(static_cast<std::size_t>(state.range(0)), 'x');
    Session session("UTF8_STRING", Session::fileWith(text));
    for (auto step : state) {
        session.copy();
        if (session.pasteboard().string() != text) state.SkipWithError("another text");
    }
}
BENCHMARK(captureOfText)
    ->Arg(100)
    ->Arg(1'000'000)
    ->Arg(8'000'000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

void captureOf4KPicture(benchmark::State& state) {
    Session session("image/png", Session::pictureOf4K());
    for (auto step : state) {
        session.copy();
        const auto image = session.pasteboard().image();
        if (!image || image->picture.pixelWidth != 3840) state.SkipWithError("no picture");
    }
}
BENCHMARK(captureOf4KPicture)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace orvel
