#pragma once

#include "platform/x11/input_devices.hpp"
#include "platform/x11/input_hub.hpp"

#include <map>

namespace orvel::x11 {

/// The middle and side buttons, which the server holds back until we answer, and the mice that
/// are taken whole because nothing less turns their wheel around for every toolkit.
class PointerGrabs {
public:
    explicit PointerGrabs(InputHub& hub) : hub_(hub) {}

    /// False when another client has one of the buttons.
    [[nodiscard]] bool takeButtons(const MasterDevices& masters);
    void giveButtonsBack();
    /// True for a press or release that belongs to the buttons taken.
    void handleHeldBack(bool isPress, int number, int source, unsigned long time);

    void takeWhole(int device);
    [[nodiscard]] bool holdsWhole(int device) const { return whole_.contains(device); }
    void dropWhole(int device);
    /// Returns when the server has given the mice back. What they sent before is still ours.
    void ungrabWhole();
    void giveWholeBack();
    void handleButton(int device, bool isPress, int number);
    void handleMotion(int device, double dx, double dy);

private:
    /// What is left of movements smaller than a pixel.
    struct Remainder {
        double x = 0;
        double y = 0;
    };

    InputHub& hub_;
    MasterDevices masters_;
    bool hasButtons_ = false;
    std::map<int, Remainder> whole_;
};

}  // namespace orvel::x11
