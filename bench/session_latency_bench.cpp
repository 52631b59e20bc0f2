// What a key costs on its way to an application when Orvel sits in the session, against the same
// way without it, in one run on one server. Prints a table; the absolute numbers are the
// machine's, the difference is ours.

#include "bench/rig_run.hpp"
#include "tools/rig/embedded_desktop.hpp"
#include "tools/rig/key_probe.hpp"
#include "tools/rig/orvel_program.hpp"
#include "tools/rig/rig_error.hpp"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <iomanip>
#include <iostream>
#include <string>
#include <vector>

namespace orvel {
namespace {

constexpr int kRounds = 10;
constexpr int kKeysPerRound = 400;
constexpr int kKeysToWarmUp = 50;

std::int64_t nowUs() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::microseconds>(now).count();
}

using Times = std::vector<std::int64_t>;

/// Microseconds from the device to the application, of each press and each release.
Times measure(rig::Keyboard& keyboard, rig::KeyProbe& probe, int keyCount) {
    const std::array<rig::PhysicalKey, 4> keys{"j", "k", "l", "h"};
    Times sent;
    probe.clear();
    for (int count = 0; count < keyCount; ++count) {
        const rig::PhysicalKey key = keys.at(static_cast<std::size_t>(count) % keys.size());
        sent.push_back(nowUs());
        keyboard.press(key);
        sent.push_back(nowUs());
        keyboard.release(key);
    }
    const rig::KeyProbe::Events received = probe.waitForKeys(sent.size());
    if (received.size() != sent.size()) {
        throw rig::RigError(std::to_string(received.size()) + " of " + std::to_string(sent.size()) +
                            " key events arrived");
    }
    Times times;
    times.reserve(sent.size());
    for (std::size_t at = 0; at < sent.size(); ++at) {
        times.push_back(received[at].receivedUs - sent[at]);
    }
    return times;
}

void addRound(Times& times, rig::EmbeddedDesktop& desktop, rig::KeyProbe& probe) {
    measure(desktop.keyboard(), probe, kKeysToWarmUp);
    const Times round = measure(desktop.keyboard(), probe, kKeysPerRound);
    times.insert(times.end(), round.begin(), round.end());
}

std::int64_t percentile(Times times, double percent) {
    std::sort(times.begin(), times.end());
    const double last = static_cast<double>(times.size() - 1);
    return times[static_cast<std::size_t>(last * percent / 100)];
}

void printRow(const std::string& name, std::int64_t median, std::int64_t p99) {
    std::cout << std::left << std::setw(24) << name << std::right << std::setw(10) << median
              << std::setw(10) << p99 << '\n';
}

void run(const std::string& program) {
    rig::EmbeddedDesktop desktop;
    rig::KeyProbe probe(desktop.environment(), desktop.x());
    rig::Settings settings = rig::usualMapping();
    for (const char* card : {"card_eject", "card_snap", "card_finder", "card_syscmd", "card_tab",
                             "card_fn", "card_shift", "card_fkeys", "card_win_advanced"}) {
        settings[card] = true;
    }
    rig::writeSettings(desktop.environment(), settings);
    Times without;
    Times with;
    // In turns, so that a slow moment of the machine does not count for one side only.
    for (int round = 0; round < kRounds; ++round) {
        addRound(without, desktop, probe);
        rig::OrvelProgram orvel(program, desktop.environment());
        addRound(with, desktop, probe);
        orvel.stop();
    }

    std::cout << "from the device to the application, " << with.size()
              << " key events, microseconds\n";
    std::cout << std::setw(34) << "median" << std::setw(10) << "p99" << '\n';
    printRow("without Orvel", percentile(without, 50), percentile(without, 99));
    printRow("with Orvel", percentile(with, 50), percentile(with, 99));
    printRow("added", percentile(with, 50) - percentile(without, 50),
             percentile(with, 99) - percentile(without, 99));
}

}  // namespace
}  // namespace orvel

int main(int argc, char** argv) {
    const std::string program = argc > 1 ? argv[1] : ORVEL_BUILD_DIR "/orvel";
    return orvel::runInRig([&program] { orvel::run(program); });
}
