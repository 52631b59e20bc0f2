#pragma once

#include "platform/launcher.hpp"
#include "platform/run_loop.hpp"
#include "platform/x11/open_service.hpp"
#include "platform/x11/service_check.hpp"

namespace orvel::x11 {

/// Starts applications by their desktop files, on the background queue.
class X11Launcher final : public Launcher {
public:
    X11Launcher(RunLoop& runLoop, const OpenService& service)
        : runLoop_(runLoop), service_(service) {}

    void openApplication(std::string_view path, std::optional<bool> activates) override;
    void openApplicationNamed(std::string_view name) override;
    void openFiles(const std::vector<std::string>& paths, std::string_view applicationPath,
                   bool activates, OpenCompletion completion) override;
    void openUrl(std::string_view url) override;
    void revealInFileManager(std::string_view root) override;

private:
    RunLoop& runLoop_;
    const OpenService& service_;
};

}  // namespace orvel::x11
