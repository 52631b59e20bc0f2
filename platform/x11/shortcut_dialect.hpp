#pragma once

#include "platform/base/event_flags.hpp"
#include "platform/base/key_codes.hpp"
#include "platform/x11/application_table.hpp"
#include "platform/x11/key_map.hpp"
#include "platform/x11/platform_table.hpp"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvel::x11 {

/// A macOS shortcut on its way out.
struct MacShortcut {
    KeyCode key = 0;
    /// Command, Control, Option and Shift; other flags do not matter.
    EventFlags modifiers = 0;
    /// The key on the keyboard that became it; absent for one that no key of its own stands for.
    std::optional<KeyCode> source;
};

/// The same act in the words of X11 applications.
struct XShortcut {
    KeyCode key = 0;
    XModifiers modifiers;
    bool operator==(const XShortcut&) const = default;
};

/// How a shortcut leaves for the application that is in front; absent when it leaves as it is.
using ShortcutTranslator = std::function<std::optional<XShortcut>(const MacShortcut&)>;

/// Tells what a macOS shortcut is called where an X11 application calls the same act otherwise.
/// Pure data; the user's table wins over the built-in one.
class ShortcutDialect {
public:
    ShortcutDialect() = default;
    /// Lines `KIND SHORTCUT = SHORTCUT`, such as `file-manager Command+Up = Alt+Up`; the kind `any`
    /// stands for all. Problems are appended to `errors`.
    ShortcutDialect(const PlatformTable& user, std::vector<std::string>& errors);

    /// Absent when the act is called the same but for the names of its modifiers.
    [[nodiscard]] std::optional<XShortcut> translate(const MacShortcut& shortcut,
                                                     ApplicationKind kind) const;

private:
    struct OwnRow {
        std::optional<ApplicationKind> kind;
        MacShortcut from;
        XShortcut to;
    };
    std::vector<OwnRow> own_;
};

/// "Command+Shift+Z": names of modifiers and one key.
std::optional<MacShortcut> parseMacShortcut(std::string_view text);
/// "Ctrl+Page_Up", "Alt+Left": the modifiers are Ctrl, Alt, Shift and Super.
std::optional<XShortcut> parseXShortcut(std::string_view text);

}  // namespace orvel::x11
