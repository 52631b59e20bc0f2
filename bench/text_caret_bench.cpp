// What one question for the text caret costs: of an entry field of GTK, and of an application that
// hangs. Prints a table; the absolute numbers are the machine's.

#include "bench/rig_run.hpp"
#include "platform/qt/qt_run_loop.hpp"
#include "platform/x11/x11_services.hpp"
#include "tools/rig/embedded_desktop.hpp"
#include "tools/rig/rig_error.hpp"
#include "tools/rig/windows.hpp"

#include <QCoreApplication>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <iomanip>
#include <iostream>
#include <vector>

namespace orvel {
namespace {

constexpr int kQuestions = 500;
constexpr int kQuestionsToTheHung = 10;

using Clock = std::chrono::steady_clock;
using Micros = std::chrono::microseconds;

std::vector<Micros> measure(const TextCaret& caret, int questions, bool isThere) {
    std::vector<Micros> times;
    for (int i = 0; i < questions; ++i) {
        const auto start = Clock::now();
        const bool found = caret.caretRect().has_value();
        times.push_back(std::chrono::duration_cast<Micros>(Clock::now() - start));
        if (found != isThere) throw rig::RigError("an answer of another kind than expected");
    }
    std::sort(times.begin(), times.end());
    return times;
}

void print(const char* what, const std::vector<Micros>& times) {
    std::cout << std::left << std::setw(28) << what << std::right << std::setw(10)
              << times[times.size() / 2].count() << std::setw(10)
              << times[times.size() * 99 / 100].count() << std::setw(10) << times.back().count()
              << '\n';
}

void run() {
    rig::EmbeddedDesktop desktop({.size = {},
                                  .windowManager = rig::WindowManager::Kind::openbox,
                                  .accessibility = rig::SessionBus::Accessibility::on});
    ::setenv("DBUS_SESSION_BUS_ADDRESS",
             desktop.environment().at("DBUS_SESSION_BUS_ADDRESS").c_str(), 1);
    qt::QtRunLoop runLoop;
    x11::ServiceOptions options;
    options.display = desktop.server().display();
    const auto services = x11::X11Services::open(runLoop, options);
    if (!services) throw rig::RigError(services.error());
    const TextCaret& caret = services.value()->textCaret();
    rig::ChildProcess dialog({.arguments = {"zenity", "--entry", "--title", "asked"},
                              .environment = desktop.environment()});
    rig::focusWindow(desktop.x(), rig::waitForWindow(desktop.x(), "asked"));
    const auto isTold = [&] {
        services.value()->catchUp();
        return caret.caretRect().has_value();
    };
    if (!rig::pollUntil(isTold)) throw rig::RigError("the dialog does not tell its caret");
    std::cout << std::left << std::setw(28) << "microseconds" << std::right << std::setw(10)
              << "median" << std::setw(10) << "p99" << std::setw(10) << "most" << '\n';
    print("an entry field", measure(caret, kQuestions, true));
    dialog.signal(SIGSTOP);
    print("an application that hangs", measure(caret, kQuestionsToTheHung, false));
    dialog.signal(SIGCONT);
}

}  // namespace
}  // namespace orvel

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    return orvel::runInRig(orvel::run);
}
