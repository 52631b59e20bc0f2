#include "tools/rig/screen_locker.hpp"

#include "tools/rig/client_programs.hpp"
#include "tools/rig/rig_error.hpp"

namespace orvel::rig {
namespace {

constexpr std::string_view kTyped = "typed ";

}  // namespace

ScreenLocker::ScreenLocker(const Environment& environment)
    : process_(
          {.arguments = {clientProgram("orvel-rig-screen-locker")}, .environment = environment}) {
    if (!process_.out().waitForText("locked")) {
        throw RigError("the screen locker does not lock: " + process_.err().text());
    }
    nextLine_ = 1;
}

std::optional<std::string> ScreenLocker::nextPassword() {
    const auto line = process_.out().waitForText(std::string(kTyped), nextLine_);
    if (!line) {
        return std::nullopt;
    }
    ++nextLine_;
    return line->substr(kTyped.size());
}

void ScreenLocker::unlock() {
    process_.closeInput();
    if (!process_.waitForExit()) {
        throw RigError("the screen locker does not end");
    }
}

}  // namespace orvel::rig
