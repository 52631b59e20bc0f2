#pragma once

#include "tools/rig/child_process.hpp"
#include "tools/rig/environment.hpp"
#include "tools/rig/x_connection.hpp"

#include <memory>
#include <string>
#include <vector>

namespace orvel::rig {

/// A real input method daemon of the desktop, with a layout and a Chinese input method to choose
/// from. One kind at a time runs in a desktop.
class InputMethod {
public:
    enum class Kind { ibus, fcitx };
    /// The engines, as both daemons call them but for the layout.
    static constexpr const char* kChinese = "chewing";
    static const char* english(Kind kind) {
        return kind == Kind::ibus ? "xkb:us::eng" : "keyboard-us";
    }

    /// Stores which engines the user of IBus has chosen, as its settings window would.
    static void choose(const std::vector<std::string>& engines, const Environment& environment);

    /// Returns when it answers and applications can be typed into through it. The environment names
    /// a home and a message bus.
    InputMethod(Kind kind, const Environment& environment, XConnection& x);
    ~InputMethod();

    /// For applications that shall be typed into through it, and for those who look for it.
    [[nodiscard]] const Environment& environment() const { return environment_; }
    [[nodiscard]] ChildProcess& process() { return *process_; }
    /// The engine that is current, empty for none, as its own tool tells.
    [[nodiscard]] std::string current() const;
    /// Selects an engine with its own tool, as its panel would.
    void select(const std::string& engine) const;
    /// Ends it in the way of a crash.
    void kill();
    void start();

private:
    void writeSettings() const;
    [[nodiscard]] bool isOnBus() const;
    [[nodiscard]] bool servesApplications() const;

    Kind kind_;
    XConnection& x_;
    Environment environment_;
    std::unique_ptr<ChildProcess> process_;
};

}  // namespace orvel::rig
