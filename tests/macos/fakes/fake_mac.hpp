#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

/// The Mac of the fakes, from the side of those who drive and look at it.
namespace fake {

/// Back to a fresh login session in which nothing was ever done. Called before each test.
void reset();

// Memory

/// References to Core Foundation objects that were given out and not given back.
int liveReferences();

// Run loop

enum class Mode { normal, tracking };  ///< `tracking`: while a menu or a drag is being followed

/// Runs the main queue and the timers until `done` says so. False when that takes too long.
bool runUntil(const std::function<bool()>& done, Mode mode = Mode::normal);
/// Runs what is due now.
void runDue(Mode mode = Mode::normal);
/// Lets time pass for timers, running each when its time comes.
void advance(std::chrono::milliseconds time, Mode mode = Mode::normal);
bool isMainThread();
int liveTimers();
/// The quality of service of the queue that the running block was put on; 0 on the main queue.
int currentQuality();

// Events

struct KeyEvent {
    int type = 10;
    int keyCode = 0;
    std::uint64_t flags = 0;
    std::int64_t userData = 0;
    bool isAutorepeat = false;
};
struct WheelEvent {
    std::int64_t lines = 0;
    std::int64_t pixels = 0;
    bool isPrecise = false;
    bool isContinuous = false;
};
/// What came out of the taps; absent when one of them swallowed it.
std::optional<KeyEvent> sendKey(const KeyEvent& event, Mode mode = Mode::normal);
std::optional<WheelEvent> sendWheel(const WheelEvent& event);
/// Extra mouse buttons, types 25 and 26; whether it came out.
bool sendButton(int type, int number);
/// A system-defined event; whether it came out.
bool sendSystemDefined();

struct PostedEvent {
    int type = 0;
    int keyCode = 0;
    std::uint64_t flags = 0;
    std::int64_t userData = 0;
    int location = 0;
    int subtype = 0;
    std::int64_t data1 = 0;
    std::int64_t data2 = 0;

    bool operator==(const PostedEvent&) const = default;
};

struct TapInfo {
    int location = 0;
    int placement = 0;
    int options = 0;
    std::uint64_t mask = 0;
    bool isEnabled = false;
};
/// Taps that the system keeps: made and not invalidated.
std::vector<TapInfo> taps();
/// The system switches all taps off and tells them why, or does not tell.
enum class SwitchOff { timeout, userInput, silently };
void switchTapsOff(SwitchOff why);

// The session

struct Session {
    bool isOnConsole = true;
    bool isLocked = false;
    bool isSecureInput = false;
    int secureInputOwner = 0;
    bool isTrusted = true;
    bool trustIsStale = false;  ///< the quick answer stays "yes" after the permission went
    bool isDisplayAsleep = false;
};
/// Posts a notification to the workspace's, the distributed or the program's own centre.
enum class Center { application, workspace, distributed };
void postNotification(Center center, const std::string& name, const void* object = nullptr,
                      const std::map<std::string, const void*>& userInfo = {});

// Accessibility

struct Window {
    std::string role = "AXWindow";
    std::string title;
    double x = 0, y = 0, width = 0, height = 0;
    bool isMinimized = false;
    bool isMain = false, isFocused = false;
    int raised = 0;
    double minimumWidth = 0;
};
struct Application {
    std::string bundleId;
    std::string name;
    std::string path;
    int policy = 0;  ///< 0: regular, 1: accessory, 2: prohibited
    bool isActive = false, isHidden = false, isTerminated = false;
    std::vector<Window> windows;  ///< what accessibility shows
    int focusedWindow = -1;
    bool isHung = false;  ///< answers no accessibility call
    std::optional<bool> enhancedMode;
    std::vector<bool> enhancedModeWrites;
    std::vector<int> activations;  ///< options of each
};
struct Caret {
    double x = 0, y = 0, width = 0, height = 0;
};

// Windows, screens, pictures

struct ServerWindow {
    unsigned number = 0;
    int pid = 0;
    int layer = 0;
    std::optional<std::string> name;
    double x = 0, y = 0, width = 0, height = 0;
    bool isOnScreen = true;
    int captureWidth = 0;  ///< 0: cannot be captured
};
struct Screen {
    double x = 0, y = 0, width = 1440, height = 900;
    double visibleX = 0, visibleY = 70, visibleWidth = 1440, visibleHeight = 805;
};

// Everything else that is on a Mac

struct InputSource {
    std::string id;
    std::string category = "TISCategoryKeyboardInputSource";
    std::optional<bool> isAscii;
    bool isSelectable = true;
};
struct ScriptOutcome {
    std::optional<std::string> text;
    std::string error;
};
struct PoppedMenu {
    struct Item {
        std::string title, key, image;
        bool isSeparator = false, isChecked = false;
    };
    std::vector<Item> items;
    double x = 0, y = 0, minimumWidth = 0;
    const void* view = nullptr;
};

/// Something that an application was told to open; without files it was only started.
struct Opening {
    std::string application;
    std::vector<std::string> files;
};

struct World {
    Session session;
    std::uint64_t hidFlags = 0;
    std::set<int> keysDown;
    double pointerX = 0, pointerY = 0;
    std::vector<PostedEvent> posted;
    bool eventsCanBeCreated = true;

    /// Calls that wait for another program or the window server.
    int slowCalls = 0;

    std::map<int, Application> applications;  ///< by process, in the system's order
    int frontmost = 0;
    std::optional<Caret> caret;
    std::vector<ServerWindow> serverWindows;
    bool capturesNeverAnswer = false;
    bool mayCapture = true;
    int capturePrompts = 0;
    std::vector<Screen> screens{Screen{}};
    int mainScreen = 0;

    std::vector<InputSource> inputSources;
    std::string currentInputSource;
    std::optional<bool> capsLock;  ///< what was set last
    bool hasHidService = true, hidServiceOpens = true;
    int openHidConnections = 0;
    int trustPrompts = 0;

    std::map<std::string, std::string> installed;  ///< bundle identifier to path
    std::vector<std::string> launched;             ///< one line for each thing that was opened
    std::vector<Opening> openings;
    std::set<std::string> refusedApplications;  ///< by path: cannot be opened
    std::set<std::string> existingFiles;        ///< beside those of this machine
    std::string openError;
    std::function<ScriptOutcome(const std::string&)> script;

    std::vector<std::pair<std::string, std::string>> pasteboard;  ///< type to contents;
    ///< those of a picture are its size, as 64x48
    std::int64_t pasteboardCount = 0;
    bool pasteboardHangs = false;

    std::vector<std::string> imageNames;                    ///< pictures in the bundle
    std::map<std::string, std::pair<int, int>> imageFiles;  ///< by path: size in pixels
    std::string loginItemError;
    bool isLoginItem = false;
    bool loginItemNeedsApproval = false;
    std::map<std::string, int> automation;  ///< by bundle identifier: what the system answers
    int hapticTaps = 0;

    bool isDark = false, reducesMotion = false, reducesTransparency = false;

    int statusItems = 0;
    bool statusItemLooksPaused = false;
    std::string statusItemImage;
    double statusItemX = 1000, statusItemY = 875;
    std::vector<PoppedMenu> menus;
    std::string chosenTitle;  ///< what the person picks in the next menu; empty: nothing
    std::function<void()> whileAMenuIsOpen;
    int monitors = 0;
    int activations = 0, terminations = 0;
    std::vector<std::uint64_t> activities;  ///< options of those that go on
    std::vector<std::string> broadcasts;    ///< told to every program of the session at once
};
World& world();

/// The person opens this program again while it runs.
void reopen();
/// The process gets a signal that it watches; false when it does not.
bool raiseSignal(int signal);
/// A click on the status item: 2 left, 4 right button up.
void clickStatusItem(int type, std::uint64_t flags);
/// What a local monitor lets through, or what other applications get while a global one watches.
bool sendToMonitors(bool isLocal, int type, int keyCode, const void* window = nullptr);
/// A window of this program, a panel or another; owned by the fakes.
const void* makeWindow(const std::string& className, bool isPanel);
/// How a window of this program was made.
unsigned long styleOf(const void* window);
/// What gets the keys in a window of this program.
const void* firstResponder(const void* window);
/// Windows of this program that were closed.
std::vector<const void*> closedWindows();

}  // namespace fake
