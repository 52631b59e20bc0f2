#include "tests/session/panel_session.hpp"
#include "tests/support/poll_until.hpp"
#include "tools/rig/rig_error.hpp"
#include "tools/rig/windows.hpp"

#include <regex>

namespace orvel::test {
namespace {

using rig::OrvelProgram;
using testing::HasSubstr;

/// A tray that talks over the message bus and draws icons and menus itself.
class NotifierHost {
public:
    explicit NotifierHost(const rig::Environment& environment)
        : environment_(environment),
          // The distribution's own interpreter: it has the package.
          mock_({.arguments = {"/usr/bin/python3", "-u", "-m", "dbusmock", "--session", kWatcher,
                               "/StatusNotifierWatcher", kWatcher},
                 .environment = environment}) {
        const std::string mock = "org.freedesktop.DBus.Mock.";
        const auto isThere = [&] {
            return tryCall(
                kWatcher, "/StatusNotifierWatcher",
                {mock + "AddProperty", kWatcher, "IsStatusNotifierHostRegistered", "<true>"});
        };
        if (!rig::pollUntil(isThere)) throw rig::RigError("no mock: " + mock_.err().text());
        call(kWatcher, "/StatusNotifierWatcher",
             {mock + "AddMethod", kWatcher, "RegisterStatusNotifierItem", "s", "", ""});
    }

    /// The name of the program on the bus, once it has put its icon here.
    std::string item() {
        const auto line = mock_.out().waitForText("RegisterStatusNotifierItem");
        if (!line) throw rig::RigError("no icon comes: " + mock_.out().text());
        const auto from = line->find('"') + 1;
        return line->substr(from, line->rfind('"') - from);
    }
    std::string call(const std::string& service, const std::string& path,
                     const std::vector<std::string>& methodAndArguments) {
        std::vector<std::string> command{"gdbus", "call",          "--session", "--dest",
                                         service, "--object-path", path,        "--method"};
        command.insert(command.end(), methodAndArguments.begin(), methodAndArguments.end());
        command.insert(command.begin() + 9, "--");  // Numbers may be negative.
        return rig::runTool(command, environment_);
    }
    /// A click of the main button, as the host reports it.
    void activate() {
        call(item(), "/StatusNotifierItem", {"org.kde.StatusNotifierItem.Activate", "0", "0"});
    }
    std::string property(const std::string& name) {
        return call(item(), "/StatusNotifierItem",
                    {"org.freedesktop.DBus.Properties.Get", "org.kde.StatusNotifierItem", name});
    }
    /// The menu as the host would draw it.
    std::string menu() {
        call(item(), "/MenuBar", {"com.canonical.dbusmenu.AboutToShow", "0"});
        return call(item(), "/MenuBar", {"com.canonical.dbusmenu.GetLayout", "0", "-1", "[]"});
    }
    void choose(const std::string& title) {
        const std::string shown = menu();
        std::smatch entry;
        if (!std::regex_search(shown, entry, std::regex("\\(([0-9]+), \\{[^}]*'" + title + "'"))) {
            throw rig::RigError("no '" + title + "' in " + shown);
        }
        call(item(), "/MenuBar",
             {"com.canonical.dbusmenu.Event", entry[1].str(), "clicked", "<0>", "0"});
    }

private:
    bool tryCall(const std::string& service, const std::string& path,
                 const std::vector<std::string>& methodAndArguments) {
        try {
            call(service, path, methodAndArguments);
            return true;
        } catch (const rig::RigError&) {
            return false;
        }
    }

    static constexpr const char* kWatcher = "org.kde.StatusNotifierWatcher";
    rig::Environment environment_;
    rig::ChildProcess mock_;
};

class PanelNotifierTest : public PanelSessionTest {
protected:
    void SetUp() override {
        PanelSessionTest::SetUp();
        host_.emplace(environment());
    }
    void TearDown() override {
        host_.reset();
        PanelSessionTest::TearDown();
    }

    std::optional<NotifierHost> host_;
};

TEST_F(PanelNotifierTest, AClickOpensThePanelAtThePointer) {
    OrvelProgram orvel = start();
    moveTo(rig::ScreenPoint{900, 300});
    host_->activate();
    waitForPanel();
    const rig::WindowFrame frame = rig::frameOf(desktop().x(), *panel());
    EXPECT_NEAR(frame.x + frame.width / 2, 900, 1);
    EXPECT_NEAR(frame.y, 300, 12);
    host_->activate();
    EXPECT_TRUE(eventually([] { return isPanelOpen(); }, false));
    EXPECT_TRUE(orvel.stop().success());
}

TEST_F(PanelNotifierTest, ThePressThatClosesThePanelDoesNotOpenItAgain) {
    OrvelProgram orvel = start();
    moveTo(rig::ScreenPoint{900, 300});
    host_->activate();
    waitForPanel();
    // The press reaches the host's window first, and then us through the host.
    moveTo(rig::ScreenPoint{900, 280});
    mouse().press(rig::Button::left);
    EXPECT_TRUE(eventually([] { return isPanelOpen(); }, false));
    host_->activate();
    mouse().release(rig::Button::left);
    // Answered after the click was handled.
    host_->property("Status");
    EXPECT_FALSE(isPanelOpen());
    EXPECT_TRUE(orvel.stop().success());
}

TEST_F(PanelNotifierTest, TheHostGetsTheWholeMenuAndItsChoicesWork) {
    OrvelProgram orvel = start();
    EXPECT_THAT(host_->menu(), testing::AllOf(HasSubstr("开机自启"), HasSubstr("访问官网"),
                                              HasSubstr("separator"), HasSubstr("退出程序")));
    EXPECT_THAT(host_->menu(), testing::Not(HasSubstr("'toggle-state': <1>")));
    host_->choose("开机自启");
    EXPECT_TRUE(eventually([&] { return host_->menu(); }, HasSubstr("'toggle-state': <1>")));
    host_->choose("退出程序");
    EXPECT_EQ(orvel.process().waitForExit(), (rig::ExitStatus{.code = 0, .signal = {}}));
}

TEST_F(PanelNotifierTest, TheHostHearsOfAPause) {
    OrvelProgram orvel = start();
    EXPECT_THAT(host_->property("ToolTip"), testing::Not(HasSubstr("已暂停")));
    keyboard().chord({"BackSpace", "Escape", "Return"});
    EXPECT_TRUE(eventually([&] { return host_->property("ToolTip"); }, HasSubstr("已暂停")));
    EXPECT_TRUE(orvel.stop().success());
}

}  // namespace
}  // namespace orvel::test
