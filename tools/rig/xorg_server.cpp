#include "tools/rig/xorg_server.hpp"

#include "tools/rig/rig_error.hpp"

#include <X11/Xatom.h>
#include <X11/extensions/XInput2.h>

#include <array>
#include <fcntl.h>
#include <fstream>

namespace orvel::rig {
namespace {

// The program itself: the wrapper in PATH insists on a console.
constexpr const char* kXorg = "/usr/lib/xorg/Xorg";

std::string sizeText(ScreenSize size) {
    return std::to_string(size.width) + "x" + std::to_string(size.height);
}

}  // namespace

XorgServer::XorgServer(const ScratchHome& home, ScreenSize size)
    : folder_(home.runtime() / "xserver"), environment_(home.environment()) {
    std::filesystem::create_directory(folder_);
    start(size);
    x_ = std::make_unique<XConnection>(display_);
    setLayout("us");
    firstKeyboard_.emplace(kFirstKeyboard, folder_ / kFirstKeyboard, *x_);
    secondKeyboard_.emplace(kSecondKeyboard, folder_ / kSecondKeyboard, *x_);
    mouse_.emplace(kMouse, folder_ / kMouse, *x_);
    touchpad_.emplace(kTouchpad, folder_ / kTouchpad, *x_);
    markAsTouchpad(*touchpad_);
}

XorgServer::~XorgServer() {
    // Before the devices let go of their sockets, which would make the server spin.
    x_.reset();
    process_.stop();
}

void XorgServer::ServerProcess::start(const Command& command) {
    process_ = std::make_unique<ChildProcess>(command);
}

void XorgServer::ServerProcess::stop() {
    if (process_) {
        process_->stop();
        process_.reset();
    }
}

void XorgServer::start(ScreenSize size) {
    const std::filesystem::path config = folder_ / "xorg.conf";
    std::ofstream(config) << xorgConfig(size, folder_);
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        failWithErrno("pipe");
    }
    LineLog numberLog{UniqueFd(ends[0])};
    UniqueFd writeEnd(ends[1]);
    process_.start(
        Command{.arguments = {kXorg, "-displayfd", std::to_string(writeEnd.get()), "-config",
                              config, "-logfile", folder_ / "xorg.log", "-noreset", "-novtswitch",
                              "-sharevts", "-nolisten", "tcp"},
                .environment = environment_,
                .keepFds = {writeEnd.get()}});
    writeEnd.reset();
    // The server writes the number of its display when it is ready for clients.
    const auto number = numberLog.waitForLine([](const std::string&) { return true; });
    if (!number) {
        throw RigError("the X server does not start: " + process_.errors());
    }
    display_ = ":" + *number;
    environment_["DISPLAY"] = display_;
}

void XorgServer::setLayout(const std::string& layouts) {
    runTool({"setxkbmap", "-rules", "evdev", "-model", "pc105", "-layout", layouts}, environment_);
}

void XorgServer::setLayout(const InputDevice& keyboard, const std::string& layouts) {
    runTool({"setxkbmap", "-device", std::to_string(keyboard.id()), "-rules", "evdev", "-model",
             "pc105", "-layout", layouts},
            environment_);
}

void XorgServer::resizeMonitor(ScreenSize size) {
    runTool({"xrandr", "--output", "DUMMY0", "--mode", sizeText(size)}, environment_);
}

void XorgServer::plugSecondMonitor(ScreenSize size, MonitorSide side) {
    const char* where = side == MonitorSide::leftOfFirst    ? "--left-of"
                        : side == MonitorSide::rightOfFirst ? "--right-of"
                                                            : "--above";
    runTool({"xrandr", "--addmode", "DUMMY1", sizeText(size)}, environment_);
    runTool({"xrandr", "--output", "DUMMY1", "--mode", sizeText(size), where, "DUMMY0"},
            environment_);
}

void XorgServer::unplugSecondMonitor() {
    runTool({"xrandr", "--output", "DUMMY1", "--off"}, environment_);
}

void XorgServer::markAsTouchpad(const InputDevice& device) {
    unsigned char off = 0;
    const bool marked = x_->succeeds([&] {
        XIChangeProperty(x_->get(), device.id(), x_->atom("libinput Tapping Enabled"), XA_INTEGER,
                         8, PropModeReplace, &off, 1);
    });
    if (!marked) {
        throw RigError("the server refuses a property on device " + device.name());
    }
}

}  // namespace orvel::rig
