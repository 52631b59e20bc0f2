#include "app/replay/replay_runner.hpp"
#include "app/replay/step_reader.hpp"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

// Any bytes are a replay: it runs or it is refused with one line, twice with the same outcome.

namespace {

/// Hours of virtual time are many timer ticks and teach nothing.
bool isLong(const std::string& steps) {
    constexpr double longest = 100;
    std::istringstream in(steps);
    orvel::replay::StepReader reader(in, [] {});
    while (reader.nextLine()) {
        const auto step = orvel::replay::parseStep(reader.line());
        if (!step || step.value().key != orvel::replay::StepKey::advance) continue;
        const orvel::Json& seconds = step.value().value;
        if (seconds.isNumber() && seconds.number() > longest) return true;
    }
    return false;
}

struct Outcome {
    int status;
    std::string effects;
    std::string failure;
    bool operator==(const Outcome&) const = default;
};

Outcome replayed(const std::string& steps) {
    std::istringstream in(steps);
    std::ostringstream out;
    std::ostringstream err;
    const int status = orvel::runReplay("fuzz", in, out, err);
    return {status, out.str(), err.str()};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string steps(reinterpret_cast<const char*>(data), size);
    if (isLong(steps)) return 0;
    const Outcome outcome = replayed(steps);
    const bool hasOneLine = outcome.failure.find('\n') == outcome.failure.size() - 1;
    if (outcome.status == 0 ? !outcome.failure.empty() : !hasOneLine) std::abort();
    if (outcome != replayed(steps)) std::abort();
    return 0;
}
