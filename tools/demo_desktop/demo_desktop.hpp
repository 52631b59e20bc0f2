#pragma once

#include "tools/rig/child_process.hpp"
#include "tools/rig/embedded_desktop.hpp"

#include <filesystem>
#include <memory>
#include <string>

namespace orvel::demo {

/// An embedded desktop with two ordinary applications side by side: a text editor and a terminal
/// with a shell. Both know nothing of Orvel.
class DemoDesktop {
public:
    /// Returns when both windows stand.
    DemoDesktop();

    [[nodiscard]] rig::Keyboard& keyboard() { return desktop_.keyboard(); }
    [[nodiscard]] rig::Keyboard& secondKeyboard() { return desktop_.server().secondKeyboard(); }
    [[nodiscard]] rig::Pointer& mouse() { return desktop_.mouse(); }
    [[nodiscard]] rig::ScreenState& state() { return desktop_.state(); }
    [[nodiscard]] const rig::Environment& environment() const { return desktop_.environment(); }

    /// Moves the mouse into the window and clicks.
    void clickEditor() { click(editorWindow_); }
    void clickTerminal() { click(terminalWindow_); }

    /// The editor's title; a star marks text that is not saved.
    [[nodiscard]] std::string editorTitle();

    /// The folder that both applications work in.
    [[nodiscard]] const std::filesystem::path& folder() { return desktop_.home().path(); }
    /// The file that the editor shows.
    [[nodiscard]] std::filesystem::path editedFile() { return folder() / "notes.txt"; }

    void writeScreenshot(const std::filesystem::path& file);

private:
    std::unique_ptr<rig::ChildProcess> startEditor();
    std::unique_ptr<rig::ChildProcess> startTerminal();
    void click(rig::WindowId window);

    rig::EmbeddedDesktop desktop_;
    std::unique_ptr<rig::ChildProcess> editor_;
    rig::WindowId editorWindow_;
    std::unique_ptr<rig::ChildProcess> terminal_;
    rig::WindowId terminalWindow_;
};

}  // namespace orvel::demo
