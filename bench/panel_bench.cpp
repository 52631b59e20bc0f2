// What the settings panel and the resting program cost: from the click on the icon until the
// panel's content is on the screen, the first time and later, and a core's share and the memory
// while the panel is closed.

#include "tools/rig/embedded_desktop.hpp"
#include "tools/rig/orvel_program.hpp"
#include "tools/rig/picture.hpp"
#include "tools/rig/poll_until.hpp"
#include "tools/rig/rig_error.hpp"
#include "tools/rig/tray.hpp"
#include "tools/rig/windows.hpp"

#include <benchmark/benchmark.h>

#include <chrono>
#include <fstream>
#include <iterator>
#include <optional>
#include <sstream>
#include <string>
#include <unistd.h>

namespace orvel {
namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

class PanelDesktop {
public:
    rig::OrvelProgram start() { return {ORVEL_PROGRAM, desktop_.environment()}; }
    /// Puts the pointer on the icon of the program that has just been started.
    void aim() { desktop_.pointAt(tray_.waitForIcon().centre()); }
    /// From the click until the panel's header is drawn.
    double secondsToOpen() {
        const auto begin = Clock::now();
        desktop_.mouse().click(rig::Button::left);
        if (!rig::pollUntil([this] { return isDrawn(); })) throw rig::RigError("no panel opens");
        return Seconds(Clock::now() - begin).count();
    }
    void close() {
        desktop_.keyboard().tap("Escape");
        if (!rig::pollUntil([this] { return !panel(); })) throw rig::RigError("the panel stays");
    }

private:
    std::optional<rig::WindowId> panel() { return rig::shownWindow(desktop_.x(), "Orvel"); }
    /// The program's mark in the header is blue.
    bool isDrawn() {
        const auto window = panel();
        if (!window) return false;
        const rig::Colour mark = rig::pictureOf(desktop_.x(), *window, 22, 40, 1, 1).at(0, 0);
        return mark.blue > 150 && mark.red < 100;
    }

    rig::EmbeddedDesktop desktop_;
    rig::Tray tray_{desktop_.environment(), desktop_.x()};
};

/// Seconds of processor time that the process has used.
double processorSeconds(int process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    std::istringstream fields(text.substr(text.rfind(')') + 2));
    std::string skipped;
    double user = 0;
    double system = 0;
    for (int field = 3; field < 14; ++field) fields >> skipped;
    fields >> user >> system;
    return (user + system) / static_cast<double>(::sysconf(_SC_CLK_TCK));
}

double residentMegabytes(int process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/statm");
    double total = 0;
    double resident = 0;
    file >> total >> resident;
    return resident * static_cast<double>(::sysconf(_SC_PAGESIZE)) / 1e6;
}

void panelOpensCold(benchmark::State& state) {
    PanelDesktop desktop;
    for ([[maybe_unused]] auto _ : state) {
        rig::OrvelProgram orvel = desktop.start();
        desktop.aim();
        state.SetIterationTime(desktop.secondsToOpen());
        desktop.close();
        orvel.stop();
    }
}
BENCHMARK(panelOpensCold)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

void panelOpensWarm(benchmark::State& state) {
    PanelDesktop desktop;
    rig::OrvelProgram orvel = desktop.start();
    desktop.aim();
    desktop.secondsToOpen();
    for ([[maybe_unused]] auto _ : state) {
        desktop.close();
        state.SetIterationTime(desktop.secondsToOpen());
    }
    orvel.stop();
}
BENCHMARK(panelOpensWarm)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(20);

void restsWithThePanelClosed(benchmark::State& state) {
    constexpr std::chrono::milliseconds kRest{10'000};
    PanelDesktop desktop;
    rig::OrvelProgram orvel = desktop.start();
    desktop.aim();
    desktop.secondsToOpen();
    desktop.close();
    const int process = orvel.process().pid();
    for ([[maybe_unused]] auto _ : state) {
        const double before = processorSeconds(process);
        rig::pollUntil([&] { return !orvel.process().running(); }, kRest);
        const double used = processorSeconds(process) - before;
        state.counters["core_percent"] = 100 * used / Seconds(kRest).count();
        state.counters["resident_MB"] = residentMegabytes(process);
        state.SetIterationTime(used);
    }
    orvel.stop();
}
BENCHMARK(restsWithThePanelClosed)->UseManualTime()->Iterations(1);

}  // namespace
}  // namespace orvel
