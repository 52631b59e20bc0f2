#include "platform/memory/memory_task_runner.hpp"

namespace orvel::memory {

Result<std::string> MemoryTaskRunner::run(std::string_view path,
                                          const std::vector<std::string>& arguments) {
    std::string commandLine(path);
    {
        auto effect = effects_.effect("task");
        effect->beginObject().member("path", path).key("arguments").beginArray();
        for (const std::string& argument : arguments) {
            effect->value(argument);
            commandLine += ' ' + argument;
        }
        effect->endArray().endObject();
    }
    const CannedOutcome* outcome = World::outcomeFor(world_.tasks, commandLine);
    if (outcome == nullptr) return std::string();
    if (outcome->error) return Failure{*outcome->error};
    return outcome->result;
}

Result<> MemoryTaskRunner::launch(std::string_view path,
                                  const std::vector<std::string>& arguments) {
    const Result<std::string> outcome = run(path, arguments);
    if (!outcome) return Failure{outcome.error()};
    return {};
}

}  // namespace orvel::memory
