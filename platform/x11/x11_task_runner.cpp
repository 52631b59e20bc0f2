#include "platform/x11/x11_task_runner.hpp"

#include "platform/x11/child_programs.hpp"

#include <utility>

namespace orvel::x11 {

namespace {

constexpr std::string_view kOsascript = "/usr/bin/osascript";
constexpr std::string_view kOpen = "/usr/bin/open";

}  // namespace

Result<std::string> X11TaskRunner::run(std::string_view path,
                                       const std::vector<std::string>& arguments) {
    if (path == kOsascript) return runOsascript(arguments);
    if (path == kOpen) return runOpen(arguments);
    return runProgram(std::string(path), arguments, display_);
}

Result<> X11TaskRunner::launch(std::string_view path, const std::vector<std::string>& arguments) {
    if (path == kOsascript || path == kOpen) {
        runLoop_.background([this, path = std::string(path), arguments] {
            static_cast<void>(run(path, arguments));
        });
        return {};
    }
    return startProgram(std::string(path), arguments, display_);
}

/// What the tool prints: the result or the error, each with the end of its line.
std::string X11TaskRunner::runOsascript(const std::vector<std::string>& arguments) {
    const auto source = parseOsascriptCommand(arguments);
    if (!source) return source.error() + '\n';
    const auto result = scripts_.run(source.value());
    return (result ? result.value()
                   : "0:" + std::to_string(source.value().size()) + ": " + result.error()) +
           '\n';
}

std::string X11TaskRunner::runOpen(const std::vector<std::string>& arguments) {
    const auto command = parseOpenCommand(arguments);
    if (!command) return command.error() + '\n';
    const auto opened = service_.run(command.value());
    return opened ? std::string() : opened.error() + '\n';
}

}  // namespace orvel::x11
