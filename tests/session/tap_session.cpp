#include "tests/session/tap_session.hpp"

#include "platform/x11/x11_event_tap.hpp"
#include "tools/rig/client_programs.hpp"
#include "tools/rig/rig_error.hpp"

#include <X11/Xlib.h>

#include <algorithm>
#include <fstream>
#include <iterator>

namespace orvel::test {

namespace {

rig::Command hostCommand(const rig::Environment& environment, std::vector<std::string> rules) {
    rules.insert(rules.begin(), ORVEL_TAP_HOST);
    return {.arguments = std::move(rules), .environment = environment};
}

}  // namespace

TapHost::TapHost(const rig::Environment& environment, std::vector<std::string> rules)
    : process_(hostCommand(environment, std::move(rules))) {
    if (!process_.out().waitForText("READY")) {
        throw rig::RigError("the tap does not start: " + process_.err().text());
    }
}

void TapHost::tell(const std::string& command) {
    const std::size_t seen = process_.out().count();
    process_.writeLine(command);
    const std::string word = command.substr(0, command.find(' '));
    if (!process_.out().waitForText("done " + word, seen)) {
        throw rig::RigError("the tap does not obey: " + process_.err().text());
    }
}

std::vector<std::string> TapHost::events() {
    std::vector<std::string> lines = process_.out().lines();
    std::erase_if(lines, [](const std::string& line) { return !line.starts_with("event "); });
    return lines;
}

std::vector<int> TapHost::guards() {
    const std::string id = std::to_string(process_.pid());
    std::ifstream children("/proc/" + id + "/task/" + id + "/children");
    std::vector<int> guards{std::istream_iterator<int>(children), {}};
    std::erase_if(guards, [](int process) { return !isRunning(process); });
    return guards;
}

bool isRunning(int process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    std::string id;
    std::string name;
    std::string status;
    return file >> id >> name >> status && status != "Z";
}

bool hasTap(rig::XConnection& x) {
    return XGetSelectionOwner(x.get(), x.atom(x11::kTapSelection)) != 0;
}

void TapHost::quit() {
    process_.writeLine("quit");
    if (process_.waitForExit() != rig::ExitStatus{.code = 0, .signal = {}}) {
        throw rig::RigError("the tap does not end well: " + process_.err().text());
    }
}

std::vector<std::string> spelled(const rig::KeyProbe::Events& events) {
    std::vector<std::string> texts;
    for (const rig::ProbeEvent& event : events) {
        using Kind = rig::ProbeEvent::Kind;
        if (event.kind != Kind::keyPress && event.kind != Kind::keyRelease) continue;
        const std::string name = event.keysym.empty() ? "neutral" : event.keysym;
        texts.push_back((event.kind == Kind::keyPress ? '+' : '-') + name);
    }
    return texts;
}

}  // namespace orvel::test
