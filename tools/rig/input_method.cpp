#include "tools/rig/input_method.hpp"

#include "tools/rig/rig_error.hpp"

#include <X11/Xlib.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <vector>

namespace orvel::rig {
namespace {

constexpr const char* kFcitxProfile = R"([Groups/0]
Name=Default
Default Layout=us
DefaultIM=chewing

[Groups/0/Items/0]
Name=keyboard-us
Layout=

[Groups/0/Items/1]
Name=chewing
Layout=

[GroupOrder]
0=Default
)";

std::vector<std::string> commandOf(InputMethod::Kind kind) {
    if (kind == InputMethod::Kind::fcitx) return {"fcitx5", "--disable=notifications,wayland"};
    return {"ibus-daemon", "--xim", "--panel=disable", "--emoji-extension=disable"};
}

std::string withoutNewline(std::string text) {
    while (!text.empty() && text.back() == '\n') text.pop_back();
    return text;
}

}  // namespace

InputMethod::InputMethod(Kind kind, const Environment& environment, XConnection& x)
    : kind_(kind),
      x_(x),
      environment_(
          merged(environment, {{"XMODIFIERS", kind == Kind::ibus ? "@im=ibus" : "@im=fcitx"},
                               {"GSETTINGS_BACKEND", "keyfile"}})) {
    writeSettings();
    start();
}

InputMethod::~InputMethod() = default;

void InputMethod::choose(const std::vector<std::string>& engines, const Environment& environment) {
    std::string list;
    for (const auto& engine : engines) list += (list.empty() ? "'" : ", '") + engine + "'";
    runTool(
        {"gsettings", "set", "org.freedesktop.ibus.general", "preload-engines", "[" + list + "]"},
        merged(environment, {{"GSETTINGS_BACKEND", "keyfile"}}));
}

void InputMethod::writeSettings() const {
    if (kind_ == Kind::ibus) {
        return choose({english(kind_), kChinese}, environment_);
    }
    const std::filesystem::path folder =
        std::filesystem::path(environment_.at("XDG_CONFIG_HOME")) / "fcitx5";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "profile") << kFcitxProfile;
}

void InputMethod::start() {
    process_ = std::make_unique<ChildProcess>(
        Command{.arguments = commandOf(kind_), .environment = environment_});
    const auto answers = [this] {
        // Asking Fcitx before it is there would have the bus start another one.
        if (!isOnBus() || !servesApplications()) return false;
        try {
            // Until an engine is selected, IBus has none.
            if (kind_ == Kind::ibus) select(english(kind_));
            static_cast<void>(current());
            return true;
        } catch (const RigError&) {
            return false;
        }
    };
    if (!pollUntil(answers)) {
        throw RigError("the input method daemon does not start: " + process_->err().text());
    }
}

bool InputMethod::isOnBus() const {
    const std::string name = kind_ == Kind::ibus ? "org.freedesktop.IBus" : "org.fcitx.Fcitx5";
    const std::string answer =
        runTool({"gdbus", "call", "--session", "--dest", "org.freedesktop.DBus", "--object-path",
                 "/org/freedesktop/DBus", "--method", "org.freedesktop.DBus.NameHasOwner", name},
                environment_);
    return answer.find("true") != std::string::npos;
}

/// An application looks for the server of its input method once, when it starts.
bool InputMethod::servesApplications() const {
    const auto server = x_.atom(kind_ == Kind::ibus ? "@server=ibus" : "@server=fcitx");
    return XGetSelectionOwner(x_.get(), server) != 0;
}

void InputMethod::kill() {
    process_->signalGroup(SIGKILL);
    process_->waitForExit();
}

std::string InputMethod::current() const {
    return withoutNewline(kind_ == Kind::ibus ? runTool({"ibus", "engine"}, environment_)
                                              : runTool({"fcitx5-remote", "-n"}, environment_));
}

void InputMethod::select(const std::string& engine) const {
    if (kind_ == Kind::ibus) {
        runTool({"ibus", "engine", engine}, environment_);
    } else {
        runTool({"fcitx5-remote", "-s", engine}, environment_);
    }
}

}  // namespace orvel::rig
