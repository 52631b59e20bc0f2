#include "tools/rig/accessible_app.hpp"

#include "tools/rig/child_process.hpp"
#include "tools/rig/client_programs.hpp"
#include "tools/rig/rig_error.hpp"

#include <algorithm>
#include <ostream>
#include <sstream>
#include <utility>

namespace orvel::rig {
namespace {

constexpr const char* kClient = "orvel-rig-accessibles";

Accessible fromLine(const std::string& line) {
    Accessible item;
    std::string place;
    std::string action;
    std::istringstream fields(line);
    std::getline(fields, item.role, '\t');
    std::getline(fields, item.name, '\t');
    std::getline(fields, place, '\t');
    std::getline(fields, item.states, '\t');
    while (fields >> action) item.actions.push_back(action);
    std::istringstream numbers(place);
    numbers >> item.frame.x >> item.frame.y >> item.frame.width >> item.frame.height;
    return item;
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const Accessible& item) {
    return out << item.role << " '" << item.name << "' at " << item.frame.x << ',' << item.frame.y
               << (item.states.empty() ? "" : " ") << item.states;
}

AccessibleApp::AccessibleApp(Environment environment, std::string application)
    : environment_(std::move(environment)), application_(std::move(application)) {}

std::vector<Accessible> AccessibleApp::items() const {
    std::istringstream lines(runTool({clientProgram(kClient), "list", application_}, environment_));
    std::vector<Accessible> items;
    for (std::string line; std::getline(lines, line);) items.push_back(fromLine(line));
    return items;
}

std::optional<Accessible> AccessibleApp::find(const std::string& role,
                                              const std::string& name) const {
    const std::vector<Accessible> all = items();
    const auto found = std::ranges::find_if(
        all, [&](const Accessible& item) { return item.role == role && item.name == name; });
    return found == all.end() ? std::nullopt : std::optional(*found);
}

Accessible AccessibleApp::waitFor(const std::string& role, const std::string& name) const {
    const auto found = pollUntil([&] { return find(role, name); },
                                 [](const std::optional<Accessible>& item) { return !!item; });
    if (found) return *found.last;
    std::ostringstream shown;
    for (const Accessible& item : items()) shown << '\n' << item;
    throw RigError("no " + role + " '" + name + "' shows in " + application_ + ':' + shown.str());
}

void AccessibleApp::act(const Accessible& item, const std::string& action) const {
    runTool({clientProgram(kClient), "act", application_, item.role, item.name, action},
            environment_);
}

}  // namespace orvel::rig
