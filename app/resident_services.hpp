#pragma once

namespace orvel {

/// What the launch sequence asks of the desktop overlay. Main thread.
class OverlayLaunch {
public:
    virtual ~OverlayLaunch() = default;

    /// Makes the taskbar, or brings the one there is to the front.
    virtual void showTaskbar() = 0;
    virtual void toggleNativeDockAutoHide(bool hide) = 0;
};

/// What the launch sequence asks of the clipboard history. Main thread.
class ClipboardLaunch {
public:
    virtual ~ClipboardLaunch() = default;

    virtual void startListening() = 0;
};

/// What the launch sequence asks of the window pictures. Main thread.
class WindowPictureLaunch {
public:
    virtual ~WindowPictureLaunch() = default;

    /// Keeps the picture of the active window fresh from now on; later calls do nothing.
    virtual void startActiveWindowCache() = 0;
};

/// The rooms that the launch sequence sets going beside the engine.
struct ResidentServices {
    OverlayLaunch& overlay;
    ClipboardLaunch& clipboard;
    WindowPictureLaunch& windowPictures;
};

}  // namespace orvel
