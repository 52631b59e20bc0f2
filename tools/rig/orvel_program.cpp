#include "tools/rig/orvel_program.hpp"

#include "tools/rig/rig_error.hpp"

#include <filesystem>
#include <fstream>

namespace orvel::rig {

namespace {

// The line that ends the start of the program.
constexpr const char* kStarted = "引擎工作状态已设为";

std::string elementOf(const std::variant<bool, std::string>& value) {
    if (const bool* flag = std::get_if<bool>(&value)) {
        return *flag ? "<true/>" : "<false/>";
    }
    return "<string>" + std::get<std::string>(value) + "</string>";
}

Command runCommand(const std::string& program, const Environment& environment,
                   const std::vector<std::string>& options) {
    Command command{.arguments = {program, "run"}, .environment = environment};
    command.arguments.insert(command.arguments.end(), options.begin(), options.end());
    return command;
}

}  // namespace

void writeSettings(const Environment& environment, const Settings& settings) {
    const std::filesystem::path folder =
        std::filesystem::path(environment.at("XDG_CONFIG_HOME")) / "orvel";
    std::filesystem::create_directories(folder);
    const std::filesystem::path whole = folder / "preferences.plist";
    const std::filesystem::path part = folder / "preferences.plist.rig";
    std::ofstream file(part);
    file << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n<dict>\n";
    for (const auto& [key, value] : settings) {
        file << "<key>" << key << "</key>" << elementOf(value) << '\n';
    }
    file << "</dict>\n</plist>\n";
    file.close();
    std::filesystem::rename(part, whole);
}

Settings usualMapping() {
    return {{"card_modifier", true}, {"map_ctrl", "Cmd"},      {"map_option", "Alt"},
            {"map_cmd", "Win"},      {"map_right_cmd", "Alt"}, {"map_right_option", "Win"}};
}

OrvelProgram::OrvelProgram(const std::string& program, const Environment& environment,
                           const std::vector<std::string>& options)
    : process_(runCommand(program, environment, options)) {
    if (!process_.out().waitForText(kStarted)) {
        throw RigError(program + " run does not start: " + process_.out().text() +
                       process_.err().text());
    }
}

}  // namespace orvel::rig
