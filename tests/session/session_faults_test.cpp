#include "app/cli/session_options.hpp"
#include "tests/session/key_delays.hpp"
#include "tests/session/tap_session.hpp"
#include "tests/support/poll_until.hpp"
#include "tools/rig/embedded_desktop.hpp"
#include "tools/rig/key_probe.hpp"
#include "tools/rig/orvel_program.hpp"
#include "tools/rig/plain_windows.hpp"
#include "tools/rig/session_bus.hpp"
#include "tools/rig/windows.hpp"

#include <gmock/gmock.h>

#include <array>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <sys/file.h>
#include <vector>

namespace orvel::test {
namespace {

using rig::KeyProbe;
using rig::OrvelProgram;
using rig::WindowFrame;
using rig::WindowManager;
using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::Field;
using testing::Ge;
using testing::IsEmpty;
using testing::Lt;

/// Noise of a machine that does other things.
constexpr milliseconds kRoom{40};

/// What the program does when something of the session fails under it: each test has a desktop of
/// its own to break.
class SessionFaults : public testing::Test {
protected:
    explicit SessionFaults(std::optional<WindowManager::Kind> kind = WindowManager::Kind::openbox)
        : desktop_({.size = {}, .windowManager = kind}) {
        rig::Settings settings = rig::usualMapping();
        for (const char* card : {"card_snap", "card_tab", "card_syscmd", "card_win_advanced"})
            settings[card] = true;
        rig::writeSettings(environment(), settings);
        probe_.emplace(environment(), desktop_.x());
        orvel_.emplace(ORVEL_PROGRAM, environment(), std::vector<std::string>{"--dry-run-power"});
    }
    void TearDown() override {
        EXPECT_TRUE(orvel_->process().running()) << orvel_->process().err().text();
        EXPECT_TRUE(orvel_->stop().success());
        EXPECT_EQ(orvel_->process().err().text(), "");
        EXPECT_TRUE(eventually([this] { return desktop_.state().keysDown(); }, IsEmpty()));
    }

    const rig::Environment& environment() { return desktop_.environment(); }
    rig::Keyboard& keyboard() { return desktop_.keyboard(); }
    WindowManager& windowManager() { return desktop_.windowManager(); }
    WindowFrame frame() { return rig::frameOf(desktop_.x(), probe_->window()); }
    void win(const char* key) { keyboard().chord({"Super_L", key}); }

    void expectTyping(const std::string& text) {
        probe_->focus();
        keyboard().type(text);
        EXPECT_TRUE(eventually([&] { return probe_->text(); }, testing::EndsWith(text)));
    }
    /// On the left half of the screen, and not beyond it.
    void expectSnappedLeft() {
        EXPECT_TRUE(eventually(
            [this] { return frame(); },
            testing::AllOf(Field(&WindowFrame::x, Lt(10)), Field(&WindowFrame::width, Ge(900)),
                           Field(&WindowFrame::width, Lt(1000)))));
    }
    rig::EmbeddedDesktop desktop_;
    KeyDelays delays_{desktop_};
    std::optional<KeyProbe> probe_;
    std::optional<OrvelProgram> orvel_;
};

class WithoutWindowManager : public SessionFaults {
protected:
    WithoutWindowManager() : SessionFaults(std::nullopt) {}
};

TEST_F(WithoutWindowManager, KeysPassAndWishesAboutWindowsChangeNothing) {
    const WindowFrame before = frame();
    for (const char* key : {"Left", "Right", "Up", "Down", "d", "m", "Tab", "1", "l"}) win(key);
    keyboard().chord({"Alt_L", "Tab"});
    keyboard().chord({"Alt_L", "F4"});
    expectTyping("still here");
    EXPECT_EQ(frame(), before);
}

TEST_F(WithoutWindowManager, TheMappingHoldsAllTheSame) {
    keyboard().chord({"Control_L", "c"});
    EXPECT_THAT(spelled(probe_->waitForKeys(4)),
                ElementsAre("+Control_L", "+c", "-c", "-Control_L"));
}

TEST_F(SessionFaults, WindowsSnapUnderTheWindowManagerThatTookOver) {
    win("Left");
    expectSnappedLeft();
    windowManager().replaceBy(WindowManager::Kind::xfwm4);
    expectTyping("after");
    win("Right");
    win("Right");
    EXPECT_TRUE(eventually([this] { return frame(); }, Field(&WindowFrame::x, Ge(950))));
    windowManager().replaceBy(WindowManager::Kind::openbox);
    expectTyping("again");
    win("Left");
    win("Left");
    expectSnappedLeft();
}

TEST_F(SessionFaults, AKilledWindowManagerIsNotMissedUntilAWindowShallMove) {
    windowManager().process().signal(SIGKILL);
    ASSERT_TRUE(eventually([this] { return rig::hasWindowManager(desktop_.x()); }, false));
    expectTyping("between");
    const WindowFrame before = frame();
    for (const char* key : {"Left", "Up", "d"}) win(key);
    expectTyping("the two");
    EXPECT_EQ(frame(), before);
    windowManager().restart(WindowManager::Kind::openbox);
    expectTyping("after");
    win("Left");
    expectSnappedLeft();
}

TEST_F(SessionFaults, AStoppedApplicationInFrontHoldsNoKeyUp) {
    const auto usual = delays_.median();
    const auto window = probe_->window();
    probe_->process().signal(SIGSTOP);
    // Room for a busy machine; a wait for the application would take tenths of a second.
    EXPECT_LT(delays_.median(), 3 * usual + kRoom);
    std::size_t next = 0;
    const auto snap = [&] { win(std::array{"Left", "Up", "Right", "Down"}.at(next++ % 4)); };
    EXPECT_LT(delays_.median(snap, 16), 3 * usual + kRoom);
    probe_->process().signal(SIGCONT);
    win("Left");
    expectSnappedLeft();
    EXPECT_TRUE(rig::isVisible(desktop_.x(), window));
}

TEST_F(SessionFaults, AStoppedWindowManagerHoldsNoKeyUp) {
    const auto usual = delays_.median();
    windowManager().process().signal(SIGSTOP);
    std::size_t next = 0;
    const auto snap = [&] { win(std::array{"Left", "Right", "Up"}.at(next++ % 3)); };
    EXPECT_LT(delays_.median(snap), 3 * usual + kRoom);
    EXPECT_LT(delays_.median(), 3 * usual + kRoom);
    windowManager().process().signal(SIGCONT);
    expectTyping("after");
    win("Left");
    win("Left");
    expectSnappedLeft();
}

TEST_F(SessionFaults, AnEndInTheMiddleOfScriptsIsAnEndInGoodOrder) {
    for (int round = 0; round < 5; ++round) {
        for (const char* key : {"l", "d", "l", "d"}) win(key);
        ASSERT_TRUE(orvel_->stop().success()) << orvel_->process().err().text();
        orvel_.emplace(ORVEL_PROGRAM, environment(), std::vector<std::string>{"--dry-run-power"});
    }
}

/// A server that nobody but its applications is connected to, so that it can be taken away.
class OwnServer {
public:
    OwnServer() {
        const auto number = process_.out().waitForText("");
        EXPECT_TRUE(number) << process_.err().text();
        environment_["DISPLAY"] = ':' + number.value_or("");
    }

    rig::ChildProcess& process() { return process_; }
    const rig::Environment& environment() const { return environment_; }
    /// Files of the home that some process has locked.
    std::vector<std::filesystem::path> lockedFiles() const {
        std::vector<std::filesystem::path> locked;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(home_.path())) {
            if (std::filesystem::is_regular_file(entry.symlink_status()) && isLocked(entry.path()))
                locked.push_back(entry.path());
        }
        return locked;
    }

private:
    static bool isLocked(const std::filesystem::path& path) {
        const rig::UniqueFd file(::open(path.c_str(), O_RDWR | O_CLOEXEC));
        if (!file.valid()) return false;
        struct flock record {};
        record.l_type = F_WRLCK;
        record.l_whence = SEEK_SET;
        const bool isFree = ::fcntl(file.get(), F_GETLK, &record) == 0 &&
                            record.l_type == F_UNLCK && ::flock(file.get(), LOCK_EX | LOCK_NB) == 0;
        return !isFree;
    }

    rig::ScratchHome home_;
    rig::SessionBus bus_{home_.environment(), rig::SessionBus::Accessibility::off};
    rig::ChildProcess process_{{.arguments = {"Xvfb", "-displayfd", "1", "-nolisten", "tcp"},
                                .environment = bus_.environment()}};
    rig::Environment environment_ = bus_.environment();
};

std::vector<int> childrenOf(int process) {
    const std::string id = std::to_string(process);
    std::ifstream children("/proc/" + id + "/task/" + id + "/children");
    return {std::istream_iterator<int>(children), {}};
}

class ServerGone : public testing::TestWithParam<int> {};

INSTANTIATE_TEST_SUITE_P(HoweverItEnds, ServerGone, testing::Values(SIGTERM, SIGKILL),
                         [](const auto& signal) {
                             return signal.param == SIGTERM ? "Ended" : "Killed";
                         });

TEST_P(ServerGone, TheProgramEndsWithAStatusAndAMessageOfItsOwnAndLeavesNothing) {
    OwnServer server;
    rig::writeSettings(server.environment(), rig::usualMapping());
    OrvelProgram orvel(ORVEL_PROGRAM, server.environment());
    const auto children = childrenOf(orvel.process().pid());
    // The guard at least.
    ASSERT_THAT(children, testing::Not(IsEmpty()));
    ASSERT_THAT(server.lockedFiles(), testing::Not(IsEmpty()));

    server.process().signal(GetParam());
    const auto ended = orvel.process().waitForExit();
    ASSERT_TRUE(ended);
    EXPECT_EQ(ended->code, static_cast<int>(session::kServerGone));
    EXPECT_TRUE(orvel.process().err().waitForEnd());
    EXPECT_THAT(orvel.process().err().lines(), ElementsAre("orvel: the X server is gone"));
    for (const int child : children) {
        EXPECT_TRUE(eventually([child] { return isRunning(child); }, false));
    }

    EXPECT_THAT(server.lockedFiles(), IsEmpty());
}

}  // namespace
}  // namespace orvel::test
