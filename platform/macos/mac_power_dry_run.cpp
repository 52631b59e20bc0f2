#include "platform/macos/mac_power_dry_run.hpp"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace orvel::macos {

namespace {

constexpr std::string_view kTarget = "tell application \"System Events\" to ";
constexpr std::string_view kLockKeys = "keystroke \"q\" using {command down, control down}";
constexpr std::array kPowerActions{std::string_view("sleep"), std::string_view("log out"),
                                   std::string_view("restart"), std::string_view("shut down"),
                                   kLockKeys};

bool isPowerScript(std::string_view source) {
    if (!source.starts_with(kTarget)) return false;
    return std::ranges::find(kPowerActions, source.substr(kTarget.size())) != kPowerActions.end();
}

}  // namespace

PowerDryRun::PowerDryRun(ScriptRunner& scripts, std::function<void(std::string_view)> say)
    : scripts_(scripts), say_(std::move(say)) {}

Result<std::string> PowerDryRun::run(std::string_view source) {
    if (!isPowerScript(source)) return scripts_.run(source);
    say_("dry run: would " + std::string(source));
    return std::string();
}

}  // namespace orvel::macos
