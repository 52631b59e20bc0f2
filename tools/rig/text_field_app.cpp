#include "tools/rig/text_field_app.hpp"

#include "tools/rig/client_programs.hpp"
#include "tools/rig/windows.hpp"

namespace orvel::rig {
namespace {

constexpr std::string_view kTyped = "typed ";

std::string titleFor(TextFieldApp::Kind kind) {
    return kind == TextFieldApp::Kind::password ? "rig password" : "rig text";
}

Command commandFor(TextFieldApp::Kind kind, const Environment& environment) {
    return {.arguments = {clientProgram("orvel-rig-text-field"), titleFor(kind),
                          kind == TextFieldApp::Kind::password ? "password" : "plain"},
            .environment = merged(environment, {{"QT_QPA_PLATFORM", "xcb"},
                                                {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1"}})};
}

}  // namespace

TextFieldApp::TextFieldApp(Kind kind, const Environment& environment, XConnection& x)
    : process_(commandFor(kind, environment)), window_(waitForWindow(x, titleFor(kind))) {
    focusWindow(x, window_);
}

std::optional<std::string> TextFieldApp::nextText() {
    const auto line = process_.out().waitForText(std::string(kTyped), nextLine_);
    if (!line) {
        return std::nullopt;
    }
    ++nextLine_;
    return line->substr(kTyped.size());
}

}  // namespace orvel::rig
