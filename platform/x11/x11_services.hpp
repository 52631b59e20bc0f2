#pragma once

#include "platform/qt/qt_run_loop.hpp"
#include "platform/x11/accessible_focus.hpp"
#include "platform/x11/client_windows.hpp"
#include "platform/x11/desktop_entries.hpp"
#include "platform/x11/gio_thread.hpp"
#include "platform/x11/input_methods.hpp"
#include "platform/x11/service_check.hpp"
#include "platform/x11/service_connection.hpp"
#include "platform/x11/shortcut_dialect.hpp"
#include "platform/x11/window_manager.hpp"
#include "platform/x11/x11_accessibility_windows.hpp"
#include "platform/x11/x11_input_sources.hpp"
#include "platform/x11/x11_launcher.hpp"
#include "platform/x11/x11_pasteboard.hpp"
#include "platform/x11/x11_screens.hpp"
#include "platform/x11/x11_script_runner.hpp"
#include "platform/x11/x11_task_runner.hpp"
#include "platform/x11/x11_text_caret.hpp"
#include "platform/x11/x11_window_list.hpp"
#include "platform/x11/x11_workspace.hpp"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orvel::x11 {

struct ServiceOptions {
    /// Empty: the display that the environment names.
    std::string display{};
    PlatformTable table{};
    /// Where the helper programs lie; empty: beside this program.
    std::filesystem::path helperFolder{};
    /// Locking, sleep and their like are said through `say` instead of done.
    bool isPowerDryRun = false;
    std::function<void(std::string_view)> say{};
};

/// The services of an X11 session that need no key events: built together, since they share one
/// connection and one picture of the desktop. Main thread.
class X11Services {
public:
    [[nodiscard]] static Result<std::unique_ptr<X11Services>> open(qt::QtRunLoop& runLoop,
                                                                   const ServiceOptions& options);
    ~X11Services();
    X11Services(const X11Services&) = delete;
    X11Services& operator=(const X11Services&) = delete;

    /// The connection that they share, for those who ask short questions beside them.
    ServiceConnection& server() { return *server_; }
    /// Which object of which application has the keyboard.
    AccessibleFocus& accessibleFocus() { return accessibleFocus_; }
    X11Screens& screens() { return screens_; }
    X11AccessibilityWindows& accessibilityWindows() { return accessibilityWindows_; }
    X11InputSources& inputSources() { return inputSources_; }
    X11Launcher& launcher() { return launcher_; }
    X11Pasteboard& pasteboard() { return pasteboard_; }
    X11ScriptRunner& scriptRunner() { return scriptRunner_; }
    X11TaskRunner& taskRunner() { return taskRunner_; }
    X11TextCaret& textCaret() { return textCaret_; }
    X11WindowList& windowList() { return windowList_; }
    X11Workspace& workspace() { return workspace_; }

    /// How shortcuts of macOS leave for the application in front. Lives as long as this object.
    [[nodiscard]] ShortcutTranslator shortcutTranslator() const {
        return [this](const MacShortcut& shortcut) {
            return dialect_.translate(shortcut, workspace_.frontmostKind());
        };
    }
    [[nodiscard]] const ClientWindows& clients() const { return clients_; }

    /// Handles what the desktop told meanwhile, so that the next event meets what is true now.
    /// Costs one look at a socket when nothing came.
    void catchUp();
    /// `lost` is called once when the X server is gone.
    void onLost(std::function<void()> lost);
    /// Lines of the user's table that do not hold, as `FILE:LINE: what is wrong`.
    [[nodiscard]] const std::vector<std::string>& tableErrors() const { return tableErrors_; }
    /// What each service finds on this desktop.
    [[nodiscard]] std::vector<ServiceCheck> checks();

private:
    X11Services(qt::QtRunLoop& runLoop, std::unique_ptr<ServiceConnection> server,
                const ServiceOptions& options);

    void applicationsChanged();
    Result<> showForceQuitDialog();
    [[nodiscard]] ServiceCheck checkForceQuit() const;

    qt::QtRunLoop& runLoop_;
    /// Tasks that are still queued when this object ends do nothing.
    std::shared_ptr<bool> isAlive_ = std::make_shared<bool>(true);
    std::vector<std::string> tableErrors_;
    ShortcutDialect dialect_;
    std::unique_ptr<ServiceConnection> server_;
    GioThread gio_;
    DesktopEntries entries_{&gio_};
    X11Screens screens_{*server_};
    InputMethods inputMethods_;
    X11InputSources inputSources_{*server_, inputMethods_};
    WindowManager manager_{*server_};
    ClientWindows clients_;
    X11AccessibilityWindows accessibilityWindows_{manager_, clients_, screens_};
    X11WindowList windowList_{manager_, clients_, screens_};
    X11Workspace workspace_{clients_, manager_};
    AccessibleFocus accessibleFocus_;
    X11TextCaret textCaret_{accessibleFocus_, clients_, screens_};
    DesktopWindows desktopWindows_;
    ApplicationLauncher applicationLauncher_;
    FileManagerService fileManager_{desktopWindows_, entries_, clients_.table(),
                                    applicationLauncher_, accessibleFocus_};
    OpenService openService_{desktopWindows_, entries_, clients_.table(), applicationLauncher_,
                             fileManager_};
    PowerService power_;
    DockService dock_{DockService::sessionMemory()};
    X11Launcher launcher_;
    X11Pasteboard pasteboard_;
    X11ScriptRunner scriptRunner_;
    X11TaskRunner taskRunner_;
    std::filesystem::path helperFolder_;
    std::string display_;
    std::function<void()> lost_;
    std::unique_ptr<qt::ReadableWatch> watch_;
};

}  // namespace orvel::x11
