#include "platform/x11/x11_launcher.hpp"

#include <string>
#include <utility>

namespace orvel::x11 {

void X11Launcher::openApplication(std::string_view path, std::optional<bool> activates) {
    runLoop_.background([this, path = std::string(path), activates = activates.value_or(true)] {
        static_cast<void>(service_.openApplication(path, {}, activates));
    });
}

void X11Launcher::openApplicationNamed(std::string_view name) {
    runLoop_.background(
        [this, name = std::string(name)] { static_cast<void>(service_.openNamed(name, {})); });
}

void X11Launcher::openFiles(const std::vector<std::string>& paths, std::string_view applicationPath,
                            bool activates, OpenCompletion completion) {
    runLoop_.background([this, paths, application = std::string(applicationPath), activates,
                         completion = std::move(completion)] {
        auto opened = service_.openApplication(application, paths, activates);
        if (!completion) return;
        runLoop_.post([completion, opened = std::move(opened)] { completion(opened); });
    });
}

void X11Launcher::openUrl(std::string_view url) {
    runLoop_.background(
        [this, url = std::string(url)] { static_cast<void>(service_.openItem(url)); });
}

void X11Launcher::revealInFileManager(std::string_view root) {
    runLoop_.background(
        [this, root = std::string(root)] { static_cast<void>(service_.reveal(root)); });
}

}  // namespace orvel::x11
