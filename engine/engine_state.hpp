#pragma once

#include "platform/base/geometry.hpp"
#include "platform/base/published.hpp"
#include "platform/event.hpp"
#include "platform/run_loop.hpp"

#include <map>
#include <optional>
#include <set>
#include <string>

namespace orvel {

/// What a rewritten key-down became; its release becomes the same.
struct RemapTarget {
    KeyCode keyCode = 0;
    EventFlags flags = 0;
};

enum class WindowSnapState { left, right, maximized, unsnapped };

/// Everything that the engine remembers between events.
struct EngineState {
    Published<bool> isWindowsModeEnabled{false};  ///< the master switch
    bool fnSacrificeState = false;
    std::map<KeyCode, RemapTarget> activeRemaps;
    std::set<KeyCode> swallowedKeys;
    bool pendingFinderCut = false;
    bool isMouseSideButtonEnabled = true;
    bool isAltMenuEnabled = true;
    bool isOptionKeyDown = false;  ///< the logical Option key
    bool hasPressedOtherKeySinceOption = false;
    Published<bool> isPaused{false};
    std::optional<Instant> lastShiftPressTime;
    bool hasPressedOtherKeySinceShift = false;
    bool didEnterEnglishViaCapsLock = false;
    bool isDesktopShown = false;
    bool pendingShowDesktop = false;
    bool isFakingAppSwitcher = false;
    bool isWinKeyStandaloneDown = false;
    bool hasPressedOtherKeySinceWinKey = false;
    /// By process identifier and title: `812_Notes`.
    std::map<std::string, WindowSnapState> windowStates;
    std::map<std::string, AxRect> windowOriginalFrames;
};

}  // namespace orvel
