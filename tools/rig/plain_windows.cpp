#include "tools/rig/plain_windows.hpp"

#include "tools/rig/client_programs.hpp"
#include "tools/rig/rig_error.hpp"
#include "tools/rig/windows.hpp"

namespace orvel::rig {

PlainWindows::PlainWindows(const Environment& environment, XConnection& x)
    : x_(x),
      process_(
          {.arguments = {clientProgram("orvel-rig-plain-windows")}, .environment = environment}) {}

WindowId PlainWindows::open(const Window& window) {
    const auto from = process_.out().count();
    process_.writeLine("open " + std::to_string(window.width) + ' ' +
                       std::to_string(window.height) + ' ' + std::to_string(window.minWidth) + ' ' +
                       std::to_string(window.minHeight) + ' ' + window.colour + ' ' +
                       window.className + ' ' + window.title);
    const auto line = process_.out().waitForText("window ", from);
    if (!line) throw RigError("the window does not come: " + process_.err().text());
    const WindowId id = std::stoul(line->substr(7));
    if (!pollUntil([&] { return isVisible(x_, id); }))
        throw RigError("the window " + window.title + " does not show");
    return id;
}

void PlainWindows::fill(WindowId window, const std::string& colour) {
    process_.writeLine("fill " + std::to_string(window) + ' ' + colour);
}

void PlainWindows::setTitle(WindowId window, const std::string& title) {
    process_.writeLine("title " + std::to_string(window) + ' ' + title);
}

void PlainWindows::destroy(WindowId window) {
    process_.writeLine("destroy " + std::to_string(window));
}

bool PlainWindows::wasClosed(WindowId window) const {
    return process_.out().waitForText("closed " + std::to_string(window)).has_value();
}

}  // namespace orvel::rig
