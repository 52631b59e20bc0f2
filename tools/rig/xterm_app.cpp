#include "tools/rig/xterm_app.hpp"

#include "tools/rig/rig_error.hpp"
#include "tools/rig/windows.hpp"

namespace orvel::rig {
namespace {

constexpr const char* kTitle = "rig terminal";

// The terminal is put into raw mode, so that control characters are recorded and not obeyed;
// the record appears when it has been.
Command commandFor(const std::filesystem::path& record, const Environment& environment,
                   const std::string& geometry) {
    const std::string script = "stty raw -echo && exec tee '" + record.string() + "'";
    return {
        .arguments = {"xterm", "-title", kTitle, "-geometry", geometry, "-e", "sh", "-c", script},
        .environment = environment};
}

}  // namespace

XtermApp::XtermApp(const ScratchHome& home, const Environment& environment, XConnection& x,
                   const std::string& geometry)
    : x_(x),
      record_(home.runtime() / "terminal-input"),
      process_(commandFor(record_, environment, geometry)),
      window_(waitForWindow(x, kTitle)) {
    if (!pollUntil([this] { return std::filesystem::exists(record_); })) {
        throw RigError("the terminal does not start its program: " + process_.err().text());
    }
    focus();
}

void XtermApp::focus() { focusWindow(x_, window_); }

std::string XtermApp::received() const { return contentOf(record_); }

}  // namespace orvel::rig
