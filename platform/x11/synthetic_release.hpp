#pragma once

#include "platform/x11/input_devices.hpp"

#include <memory>
#include <string>

namespace orvel::x11 {

/// Releases what is down on the synthetic keyboard and pointer after their user has died.
class SyntheticRelease {
public:
    static Result<SyntheticRelease> open(const std::string& display);

    /// Returns when everything is up and the server has noticed the death: requests that the dead
    /// process sent last may still be handled until then.
    void releaseEverything();

private:
    explicit SyntheticRelease(std::unique_ptr<X11Session> session);

    void releaseKeys();
    void releaseButtons();
    void releaseOrphans();
    [[nodiscard]] bool waitForTapToEnd();

    std::unique_ptr<X11Session> session_;
    MasterDevices masters_;
};

}  // namespace orvel::x11
