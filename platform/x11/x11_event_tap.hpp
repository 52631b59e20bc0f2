#pragma once

#include "platform/event_tap.hpp"
#include "platform/x11/input_devices.hpp"
#include "platform/x11/input_hub.hpp"

#include <set>

namespace orvel::x11 {

/// The tap of an X11 session. Every physical keyboard is grabbed before applications see its keys;
/// what passes leaves through the synthetic device. Keys pass as they came until `enable`.
class X11EventTap final : public EventTap {
public:
    explicit X11EventTap(InputHub& hub);
    ~X11EventTap() override;
    X11EventTap(const X11EventTap&) = delete;
    X11EventTap& operator=(const X11EventTap&) = delete;

    [[nodiscard]] bool create(const EventTapRequest& request, EventHandler handler) override;
    void enable() override;
    [[nodiscard]] bool exists() const override { return exists_; }
    [[nodiscard]] bool isEnabled() const override { return isEnabled_; }

    /// Handles everything that arrived. To be called when the session's file descriptor is
    /// readable, and after other requests on this session.
    void processEvents();
    /// Releases every key that is out and gives all devices back.
    void stop();

private:
    bool grabKeyboard(int device);
    void dropDevice(int device);
    void watchDevices();
    void handleInputEvent(int type, void* data);
    void handleHierarchy(const void* data);

    InputHub& hub_;
    MasterDevices masters_;
    EventHandler handler_;
    std::set<int> keyboards_;
    bool exists_ = false;
    bool isEnabled_ = false;
};

}  // namespace orvel::x11
