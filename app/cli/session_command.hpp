#pragma once

#include "app/cli/session_options.hpp"

#include <string>
#include <vector>

namespace orvel {

/// A command that needs a desktop session.
struct SessionCommand {
    const char* name;
    const char* description;
};

inline constexpr SessionCommand kRunCommand{"run", "Start in this desktop session and stay"};
inline constexpr SessionCommand kPanelCommand{"panel",
                                              "Open the settings panel of the running program"};
inline constexpr SessionCommand kRecordCommand{
    "record", "Write what is typed and what becomes of it as replay steps"};
inline constexpr SessionCommand kDoctorCommand{
    "doctor", "Tell what this desktop can and cannot do for Orvel"};
inline constexpr SessionCommand kSessionCommands[] = {kRunCommand, kPanelCommand, kRecordCommand,
                                                      kDoctorCommand};

/// What a program can do in the desktop session of one system. Each returns the exit status.
class SessionProgram {
public:
    virtual ~SessionProgram() = default;

    /// Where the debug trace goes, as people are told.
    [[nodiscard]] virtual std::string traceFile() const = 0;
    /// Stays until it is asked to end; records the session as well when the options say so.
    virtual int run(const session::SessionOptions& options) = 0;
    /// Has the running program of this session open its settings panel.
    virtual int openPanel() = 0;
    /// Prints what this desktop can and cannot do.
    virtual int doctor() = 0;
};

/// Does what a command line asks of a session; `arguments` begin with the program and the command.
int runSessionCommand(const std::vector<std::string>& arguments, SessionProgram& program);

}  // namespace orvel
