#include "platform/memory/memory_script_runner.hpp"

namespace orvel::memory {

Result<std::string> MemoryScriptRunner::run(std::string_view source) {
    effects_.effect("script")
        ->beginObject()
        .member("runner", "NSAppleScript")
        .member("source", source)
        .endObject();
    const CannedOutcome* outcome = World::outcomeFor(world_.scripts, source);
    if (outcome == nullptr) return std::string();
    if (outcome->error) return Failure{*outcome->error};
    return outcome->result;
}

}  // namespace orvel::memory
