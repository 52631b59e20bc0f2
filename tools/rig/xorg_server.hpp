#pragma once

#include "tools/rig/child_process.hpp"
#include "tools/rig/environment.hpp"
#include "tools/rig/input_device.hpp"
#include "tools/rig/scratch_home.hpp"
#include "tools/rig/x_connection.hpp"
#include "tools/rig/xorg_config.hpp"

#include <memory>
#include <optional>
#include <string>

namespace orvel::rig {

enum class MonitorSide { leftOfFirst, rightOfFirst, aboveFirst };

/// A real X server on a display of its own, without hardware, with test input devices and the
/// keyboard layout of an ordinary PC. Several may run side by side.
class XorgServer {
public:
    /// Returns when the server takes clients and its devices take events.
    explicit XorgServer(const ScratchHome& home, ScreenSize size = {});
    ~XorgServer();
    XorgServer(const XorgServer&) = delete;
    XorgServer& operator=(const XorgServer&) = delete;

    const std::string& display() const { return display_; }
    /// The home's environment with DISPLAY set.
    const Environment& environment() const { return environment_; }
    XConnection& x() { return *x_; }

    Keyboard& keyboard() { return *firstKeyboard_; }
    Keyboard& secondKeyboard() { return *secondKeyboard_; }
    Pointer& mouse() { return *mouse_; }
    /// Looks like a touchpad of libinput: the server shows its tapping property.
    Pointer& touchpad() { return *touchpad_; }

    /// Sets the layouts of all keyboards: "us", "de", "us,ru".
    void setLayout(const std::string& layouts);
    /// Sets the layouts of one keyboard only.
    void setLayout(const InputDevice& keyboard, const std::string& layouts);

    /// Gives the first monitor another size; one of the usual ones, such as 1280x800.
    void resizeMonitor(ScreenSize size);
    void plugSecondMonitor(ScreenSize size, MonitorSide side);
    void unplugSecondMonitor();

private:
    // Ends gently even when construction fails half-way: a server that is killed leaves the
    // socket of its display behind.
    class ServerProcess {
    public:
        ~ServerProcess() { stop(); }
        void start(const Command& command);
        void stop();
        std::string errors() const { return process_->err().text(); }

    private:
        std::unique_ptr<ChildProcess> process_;
    };

    void start(ScreenSize size);
    void markAsTouchpad(const InputDevice& device);

    std::filesystem::path folder_;
    Environment environment_;
    std::string display_;
    ServerProcess process_;
    std::unique_ptr<XConnection> x_;
    std::optional<Keyboard> firstKeyboard_;
    std::optional<Keyboard> secondKeyboard_;
    std::optional<Pointer> mouse_;
    std::optional<Pointer> touchpad_;
};

}  // namespace orvel::rig
