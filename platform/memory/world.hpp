#pragma once

#include "platform/accessibility_windows.hpp"
#include "platform/base/json.hpp"
#include "platform/event.hpp"
#include "platform/input_sources.hpp"
#include "platform/pasteboard.hpp"
#include "platform/screens.hpp"
#include "platform/window_list.hpp"
#include "platform/workspace.hpp"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace orvel::memory {

/// What a bundle identifier resolves to.
struct InstalledApplication {
    std::optional<std::string> bundleId;
    std::optional<std::string> path;
    std::string name;
};

/// The accessibility side of a window; an absent member cannot be read.
struct WorldAxWindow {
    std::string role;
    std::optional<std::string> title;
    std::optional<AxPoint> position;
    std::optional<Size> size;
    bool isMinimized = false;
    bool isFocused = false;
    double minWidth = 0;  ///< the window accepts no smaller width
};

struct WorldWindow {
    WindowInfo info;
    bool isOnScreen = false;
    std::optional<int> capturePixelWidth;  ///< absent: it cannot be captured
    std::optional<WorldAxWindow> ax;
};

struct WorldInputSource {
    InputSource source;
    bool isSelectable = false;
};

enum class HidService { ok, missing, closed };

struct PixelSize {
    int width = 0;
    int height = 0;
};

/// What lies on the pasteboard.
struct WorldPasteboard {
    std::optional<std::string> text;
    std::optional<PixelSize> image;
    PasteboardMarks marks;
    std::int64_t changeCount = 0;
};

/// How everything goes whose text contains `contains`: with `result`, or with `error` when it
/// has one.
struct CannedOutcome {
    std::string contains;
    std::string result;
    std::optional<std::string> error;
};

inline constexpr const char* kHomeDirectory = "/Users/user";
inline constexpr const char* kCachesDirectory = "/Users/user/Library/Caches";
inline constexpr const char* kApplicationsDirectory = "/Applications";

/// Everything that the desktop in memory is at one moment. Steps of a replay and tests write it,
/// the ports read it.
struct World {
    bool isTrusted = true;
    bool canRecordScreen = true;
    bool canCreateTap = true;

    std::optional<std::string> frontmost;
    std::vector<RunningApplication> apps;
    std::vector<InstalledApplication> installed;
    std::vector<ProcessId> otherInstances;

    std::vector<Screen> screens{{{0, 0, 1440, 900}, {0, 0, 1440, 875}}};
    ScreenPoint mouse;
    std::vector<WorldWindow> windows;  ///< front to back
    std::optional<AxRect> caret;

    std::vector<WorldInputSource> inputSources;
    std::optional<std::string> currentInputSource;

    EventFlags hidFlags = 0;
    std::vector<KeyCode> keysDown;  ///< each once
    /// Once written from outside, a field no longer follows the events that arrive.
    bool isHidFlagsPinned = false;
    bool isKeysDownPinned = false;
    HidService hidService = HidService::ok;

    WorldPasteboard pasteboard;

    std::optional<Json> dockPlist;
    std::optional<std::vector<std::string>> applicationsFolder{std::vector<std::string>{}};
    std::map<std::string, std::vector<std::byte>, std::less<>> files;
    std::set<std::string, std::less<>> folders{kHomeDirectory, kApplicationsDirectory};
    std::vector<std::string> unwritable;  ///< prefixes of paths

    std::vector<CannedOutcome> scripts;
    std::vector<CannedOutcome> tasks;
    std::vector<CannedOutcome> launchErrors;
    std::optional<std::string> loginItemError;
    std::optional<ScreenRect> statusButton{{1200, 875, 30, 25}};

    /// The first window of that number, null when there is none.
    [[nodiscard]] WorldWindow* window(WindowNumber number);
    /// The first outcome whose text is part of `subject`, null when there is none.
    [[nodiscard]] static const CannedOutcome* outcomeFor(const std::vector<CannedOutcome>& outcomes,
                                                         std::string_view subject);

    /// Another application copies `text` and a picture, or clears the pasteboard with neither, and
    /// says by marks what it copied.
    void copyFromOutside(std::optional<std::string> text, std::optional<PixelSize> image,
                         PasteboardMarks marks = {});
    /// The hardware sent `event`: modifier flags and held keys follow unless they are pinned.
    void follow(const Event& event);
    /// Another process removes the file or folder.
    void removeFromOutside(std::string_view path);
    [[nodiscard]] bool isUnwritable(std::string_view path) const;
};

}  // namespace orvel::memory
