#pragma once

#include "platform/run_loop.hpp"
#include "platform/script_runner.hpp"
#include "platform/task_runner.hpp"
#include "platform/x11/open_service.hpp"

#include <string>
#include <vector>

namespace orvel::x11 {

/// Child processes. The two tools of macOS that have no program here, `/usr/bin/osascript` and
/// `/usr/bin/open`, are answered by this session's own services; every other path runs as it is.
class X11TaskRunner final : public TaskRunner {
public:
    X11TaskRunner(RunLoop& runLoop, ScriptRunner& scripts, const OpenService& service,
                  std::string display)
        : runLoop_(runLoop), scripts_(scripts), service_(service), display_(std::move(display)) {}

    Result<std::string> run(std::string_view path,
                            const std::vector<std::string>& arguments) override;
    Result<> launch(std::string_view path, const std::vector<std::string>& arguments) override;

private:
    std::string runOsascript(const std::vector<std::string>& arguments);
    std::string runOpen(const std::vector<std::string>& arguments);

    RunLoop& runLoop_;
    ScriptRunner& scripts_;
    const OpenService& service_;
    std::string display_;
};

}  // namespace orvel::x11
