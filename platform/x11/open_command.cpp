#include "platform/x11/open_command.hpp"

namespace orvel::x11 {

Result<OpenCommand> parseOpenCommand(const std::vector<std::string>& arguments) {
    OpenCommand command;
    bool areOptionsOver = false;
    for (std::size_t each = 0; each < arguments.size(); ++each) {
        const auto& argument = arguments[each];
        if (areOptionsOver || !argument.starts_with('-')) {
            command.items.push_back(argument);
            continue;
        }
        const bool takesValue = argument == "-a" || argument == "-b";
        if (takesValue && each + 1 == arguments.size())
            return Failure{"open: option requires an argument -- " + argument.substr(1)};
        if (argument == "-a")
            command.applicationName = arguments[++each];
        else if (argument == "-b")
            command.applicationId = arguments[++each];
        else if (argument == "-R")
            command.isReveal = true;
        else if (argument == "--")
            areOptionsOver = true;
        else
            return Failure{"open: unrecognized option `" + argument + "'"};
    }
    const bool isEmpty =
        command.items.empty() && command.applicationName.empty() && command.applicationId.empty();
    if (isEmpty || (command.isReveal && command.items.empty()))
        return Failure{"open: nothing to open"};
    return command;
}

Result<std::string> parseOsascriptCommand(const std::vector<std::string>& arguments) {
    std::string source;
    for (std::size_t each = 0; each < arguments.size(); each += 2) {
        if (arguments[each] != "-e")
            return Failure{"osascript: " + arguments[each] + ": no such file"};
        if (each + 1 == arguments.size())
            return Failure{"osascript: option requires an argument -- e"};
        if (each > 0) source += '\n';
        source += arguments[each + 1];
    }
    return source;
}

}  // namespace orvel::x11
