#pragma once

#include "platform/event_tap.hpp"
#include "platform/x11/keyboard_grabs.hpp"
#include "platform/x11/panic_chord.hpp"
#include "platform/x11/pointer_grabs.hpp"

#include <functional>

namespace orvel::x11 {

/// The tap of an X11 session. Every physical keyboard is taken before applications see its keys,
/// and so are the middle and side buttons; what passes leaves through the synthetic device. Until
/// `enable` everything passes.
class X11EventTap final : public EventTap {
public:
    explicit X11EventTap(InputHub& hub);
    ~X11EventTap() override;
    X11EventTap(const X11EventTap&) = delete;
    X11EventTap& operator=(const X11EventTap&) = delete;

    /// Refused while another client holds a keyboard, a side button, or a tap of this kind. Of the
    /// request only the mask has a counterpart: there is one tap, before everything else.
    [[nodiscard]] bool create(const EventTapRequest& request, EventHandler handler) override;
    void enable() override;
    [[nodiscard]] bool exists() const override { return exists_; }
    /// False also when a keyboard has slipped away, which a key combination of the server does.
    [[nodiscard]] bool isEnabled() const override;

    /// Handles everything that arrived. To be called when the session's file descriptor is
    /// readable, and after requests that wait for an answer on this session.
    void processEvents();
    /// Called before each event is handled, to bring everything that decides about it up to date.
    void beforeEvent(std::function<void()> called) { beforeEvent_ = std::move(called); }
    /// Mice with a wheel are taken whole while on, so that their wheel reaches the handler.
    void setWheelGrab(bool on);
    /// Called when Backspace, Escape and Return are struck together: with true after every key is
    /// released and the devices are given back, with false when they are taken again.
    void onPanicChord(std::function<void(bool isGivenBack)> told) { panicTold_ = std::move(told); }
    /// Takes the devices again that the chord gave back; nothing is told of it.
    void takeBack();
    /// Releases every key that is out and gives all devices back for good.
    void stop();

private:
    [[nodiscard]] bool claimTap();
    void releaseClaim();
    [[nodiscard]] bool takeDevices();
    void giveDevicesBack();
    void takeIfWanted(const InputDevice& device);
    void selectChanges();
    void watchRawKeys(bool on);

    void handleInput(int type, void* data);
    void handleKey(int type, const void* data);
    void handleButton(int type, const void* data);
    void handleRawMotion(const void* data);
    void handleRawKey(int type, const void* data);
    void handleHierarchy(const void* data);
    void handleKeyboardChange(const void* event);
    void strikePanicChord();

    [[nodiscard]] bool holdsDevices() const;
    [[nodiscard]] bool hasEvent() const;

    InputHub& hub_;
    KeyboardGrabs keyboards_;
    PointerGrabs pointers_;
    MasterDevices masters_;
    EventMask mask_ = 0;
    EventHandler handler_;
    std::function<void()> beforeEvent_;
    PanicChord chord_;
    std::function<void(bool)> panicTold_;
    unsigned long claimWindow_ = 0;
    bool exists_ = false;
    bool isEnabled_ = false;
    bool isGivenBack_ = false;
    bool grabsWheels_ = false;
    bool isMapStale_ = false;
};

/// The selection whose owner runs the one tap of an X server.
inline constexpr const char* kTapSelection = "_ORVEL_TAP";

}  // namespace orvel::x11
