#pragma once

#include "platform/script_runner.hpp"

#include <functional>
#include <string_view>

namespace orvel::macos {

/// Runs scripts, but reports those that would lock, suspend or end something instead.
class PowerDryRun final : public ScriptRunner {
public:
    PowerDryRun(ScriptRunner& scripts, std::function<void(std::string_view)> say);

    Result<std::string> run(std::string_view source) override;

private:
    ScriptRunner& scripts_;
    std::function<void(std::string_view)> say_;
};

}  // namespace orvel::macos
