#pragma once

#include "platform/base/result.hpp"

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace orvel::x11 {

namespace script {

enum class PowerAction { lock, sleep, logOut, restart, shutDown };

struct Power {
    PowerAction action;
    bool operator==(const Power&) const = default;
};
struct ShowDesktop {
    bool operator==(const ShowDesktop&) const = default;
};
struct ShowForceQuitDialog {
    bool operator==(const ShowForceQuitDialog&) const = default;
};
struct SetDockHidden {
    bool isHidden;
    bool operator==(const SetDockHidden&) const = default;
};
/// Raises the first window of that title; nothing happens when there is none.
struct RaiseWindow {
    std::int64_t process;
    std::string title;
    bool operator==(const RaiseWindow&) const = default;
};
struct FileManagerVersion {
    bool operator==(const FileManagerVersion&) const = default;
};
/// The URL of the folder in the file manager's front window, else of the desktop; a text that
/// begins with `errorPrefix` when it cannot be had.
struct FrontFolder {
    std::string errorPrefix;
    bool operator==(const FrontFolder&) const = default;
};
struct SetFrontFolder {
    std::string path;
    bool operator==(const SetFrontFolder&) const = default;
};
struct MakeFolder {
    std::string parent;
    bool operator==(const MakeFolder&) const = default;
};
struct EmptyTrash {
    bool operator==(const EmptyTrash&) const = default;
};

}  // namespace script

/// What one script asks of the session.
using ScriptAction = std::variant<script::Power, script::ShowDesktop, script::ShowForceQuitDialog,
                                  script::SetDockHidden, script::RaiseWindow,
                                  script::FileManagerVersion, script::FrontFolder,
                                  script::SetFrontFolder, script::MakeFolder, script::EmptyTrash>;

/// Reads one AppleScript text of the vocabulary that this system uses. A text is one statement to
/// one application and matches as a whole or not at all, so that no name inside it, whatever it
/// holds, can become a second statement. The failure is what the real runner would say: the
/// application's name, the statement, the error's number.
Result<ScriptAction> parseScript(std::string_view source);

}  // namespace orvel::x11
