#include "tools/rig/clipboard_app.hpp"

#include "tools/rig/client_programs.hpp"
#include "tools/rig/rig_error.hpp"

namespace orvel::rig {
namespace {

const std::string kDone = "done";

Command commandFor(ClipboardApp::Kind kind, const Environment& environment) {
    switch (kind) {
        case ClipboardApp::Kind::gtk:
            // Only the system's own interpreter has the toolkit.
            return {.arguments = {"/usr/bin/python3", ORVEL_RIG_SCRIPTS "/gtk_clipboard.py"},
                    .environment = merged(environment, {{"GDK_BACKEND", "x11"}})};
        case ClipboardApp::Kind::qt:
            return {.arguments = {clientProgram("orvel-rig-qt-clipboard")},
                    .environment = merged(environment, {{"QT_QPA_PLATFORM", "xcb"}})};
        case ClipboardApp::Kind::plain: break;
    }
    return {.arguments = {clientProgram("orvel-rig-selection-owner")}, .environment = environment};
}

}  // namespace

ClipboardApp::ClipboardApp(Kind kind, const Environment& environment)
    : process_(commandFor(kind, environment)) {
    nextAnswer(0);
}

std::string ClipboardApp::tell(const std::string& line) {
    const auto from = process_.out().count();
    process_.writeLine(line);
    return nextAnswer(from);
}

std::string ClipboardApp::nextAnswer(std::size_t from) {
    const auto line = process_.out().waitForLine(
        [](const std::string& each) { return each.starts_with(kDone); }, from);
    if (!line) throw RigError("the clipboard application is silent: " + process_.err().text());
    return line->size() > kDone.size() ? line->substr(kDone.size() + 1) : std::string();
}

}  // namespace orvel::rig
