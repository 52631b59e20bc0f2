#include "tools/demo_desktop/demo_desktop.hpp"

#include "tools/rig/picture.hpp"
#include "tools/rig/windows.hpp"

#include <fstream>

namespace orvel::demo {

namespace {

constexpr rig::WindowFrame kEditorPlace{60, 80, 860, 560};
constexpr rig::WindowFrame kTerminalPlace{980, 80, 860, 560};
constexpr const char* kTerminalTitle = "Terminal";
// As other terminals have it; xterm itself pastes with the mouse only.
constexpr const char* kPasteKey =
    "XTerm.VT100.translations: #override Ctrl Shift <Key>V: insert-selection(CLIPBOARD)";

}  // namespace

DemoDesktop::DemoDesktop()
    : desktop_({.size = {},
                .windowManager = rig::WindowManager::Kind::openbox,
                .accessibility = rig::SessionBus::Accessibility::on}),
      editor_(startEditor()),
      editorWindow_(rig::waitForWindow(desktop_.x(), "l3afpad")),
      terminal_(startTerminal()),
      terminalWindow_(rig::waitForWindow(desktop_.x(), kTerminalTitle)) {
    rig::placeWindow(desktop_.x(), editorWindow_, kEditorPlace);
    rig::placeWindow(desktop_.x(), terminalWindow_, kTerminalPlace);
}

std::string DemoDesktop::editorTitle() { return rig::titleOf(desktop_.x(), editorWindow_); }

void DemoDesktop::writeScreenshot(const std::filesystem::path& file) {
    rig::screenshot(desktop_.x()).writePng(file);
}

std::unique_ptr<rig::ChildProcess> DemoDesktop::startEditor() {
    std::ofstream(editedFile()).flush();
    return std::make_unique<rig::ChildProcess>(rig::Command{
        .arguments = {"l3afpad", editedFile()}, .environment = environment(), .folder = folder()});
}

std::unique_ptr<rig::ChildProcess> DemoDesktop::startTerminal() {
    return std::make_unique<rig::ChildProcess>(rig::Command{
        .arguments = {"xterm", "-title", kTerminalTitle, "-fa", "Monospace", "-fs", "11", "-bw",
                      "0", "-xrm", kPasteKey, "-e", "sh"},
        .environment = rig::merged(environment(), {{"PS1", "$ "}, {"TERM", "xterm-256color"}}),
        .folder = folder()});
}

void DemoDesktop::click(rig::WindowId window) {
    desktop_.pointAt(rig::frameOf(desktop_.x(), window).centre());
    mouse().click(rig::Button::left);
    rig::waitForFocus(desktop_.x(), window);
}

}  // namespace orvel::demo
