#include "tests/session/panel_session.hpp"
#include "tests/support/poll_until.hpp"
#include "tools/rig/picture.hpp"
#include "tools/rig/rig_error.hpp"

#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

namespace orvel::test {
namespace {

using rig::OrvelProgram;

/// The desktop portal that tells how things shall look, played by dbusmock.
class LooksPortal {
public:
    LooksPortal(const rig::Environment& environment, unsigned colorScheme)
        : environment_(environment),
          mock_({.arguments = {"/usr/bin/python3", "-u", "-m", "dbusmock", "--session", kName,
                               kPath, kInterface},
                 .environment = environment}) {
        // Portals wrap what they answer twice.
        const std::string answer =
            "ret = dbus.UInt32(" + std::to_string(colorScheme) +
            ", variant_level=2) if args[1] == 'color-scheme' else dbus.Boolean(True, "
            "variant_level=2)";
        const auto isThere = [&] {
            try {
                call("AddMethod", {kInterface, "Read", "ss", "v", answer});
                return true;
            } catch (const rig::RigError&) {
                return false;
            }
        };
        if (!rig::pollUntil(isThere)) throw rig::RigError("no mock: " + mock_.err().text());
    }

    void change(const std::string& group, const std::string& key, const std::string& value) {
        call("EmitSignal", {kInterface, "SettingChanged", "ssv",
                            "[<'" + group + "'>, <'" + key + "'>, <" + value + ">]"});
    }

private:
    void call(const std::string& method, const std::vector<std::string>& arguments) {
        std::vector<std::string> command{
            "gdbus",  "call",     "--session",
            "--dest", kName,      "--object-path",
            kPath,    "--method", "org.freedesktop.DBus.Mock." + method};
        command.insert(command.end(), arguments.begin(), arguments.end());
        rig::runTool(command, environment_);
    }

    static constexpr const char* kName = "org.freedesktop.portal.Desktop";
    static constexpr const char* kPath = "/org/freedesktop/portal/desktop";
    static constexpr const char* kInterface = "org.freedesktop.portal.Settings";
    rig::Environment environment_;
    rig::ChildProcess mock_;
};

class PanelAppearanceTest : public PanelSessionTest {
protected:
    /// How light the panel's surface is beside its cards, from 0 to 255.
    static int lightness() {
        const auto window = panel();
        if (!window) return -1;
        const rig::Colour colour = rig::pictureOf(desktop().x(), *window, 6, 300, 1, 1).at(0, 0);
        return (colour.red + colour.green + colour.blue) / 3;
    }
    static testing::AssertionResult becomesDark() {
        return eventually([] { return lightness(); },
                          testing::AllOf(testing::Ge(10), testing::Lt(70)));
    }
    static testing::AssertionResult becomesLight() {
        return eventually([] { return lightness(); }, testing::Gt(200));
    }
};

TEST_F(PanelAppearanceTest, WithoutAPortalThePanelIsLight) {
    OrvelProgram orvel = start();
    EXPECT_TRUE(run({"panel"}).success());
    EXPECT_TRUE(becomesLight());
    EXPECT_TRUE(orvel.stop().success());
}

TEST_F(PanelAppearanceTest, TheArrowGrowsOutOfThePanelWithoutAGap) {
    constexpr int kMiddle = 175;
    constexpr int kBelowTip = 3;
    constexpr int kIntoTheHeader = 20;
    OrvelProgram orvel = start();
    EXPECT_TRUE(run({"panel"}).success());
    EXPECT_TRUE(becomesLight());
    const auto window = panel();
    ASSERT_TRUE(window);
    const rig::Picture line =
        rig::pictureOf(desktop().x(), *window, kMiddle, kBelowTip, 1, kIntoTheHeader);
    EXPECT_THAT(line.pixels, testing::Each(testing::Field(&rig::Colour::green, testing::Gt(200))));
    EXPECT_TRUE(orvel.stop().success());
}

TEST_F(PanelAppearanceTest, TheOpenPanelFollowsThePortalAtOnce) {
    LooksPortal portal(environment(), 1);
    OrvelProgram orvel = start();
    EXPECT_TRUE(run({"panel"}).success());
    EXPECT_TRUE(becomesDark());
    portal.change("org.freedesktop.appearance", "color-scheme", "uint32 2");
    EXPECT_TRUE(becomesLight());
    portal.change("org.freedesktop.appearance", "color-scheme", "uint32 1");
    EXPECT_TRUE(becomesDark());
    EXPECT_TRUE(isPanelOpen());
    EXPECT_TRUE(orvel.stop().success());
}

/// A switch of the panel, as a camera sees it.
class FilmedSwitch {
public:
    FilmedSwitch(rig::XConnection& x, const rig::WindowFrame& frame) : x_(x), frame_(frame) {}

    /// Whether the knob shows between its two places after `turn`, until it arrives at the other.
    bool movesWhen(const std::function<void()>& turn) {
        const bool wasOn = knob() > kMiddle;
        turn();
        bool isBetween = false;
        const bool arrived = rig::pollUntil([&] {
            const double place = knob();
            isBetween = isBetween || (place > kOff + kNear && place < kOn - kNear);
            return wasOn ? place < kOff + 1 : place > kOn - 1;
        });
        if (!arrived) throw rig::RigError("the knob does not arrive");
        return isBetween;
    }

private:
    /// The middle of what is white, in points from the left.
    double knob() {
        const rig::Picture line =
            rig::pictureOf(x_, x_.root(), frame_.x, frame_.y + frame_.height / 2, frame_.width, 1);
        double sum = 0;
        int count = 0;
        for (int i = 0; i < line.width; ++i) {
            if (line.at(i, 0) != rig::Colour{255, 255, 255}) continue;
            sum += i + 0.5;
            ++count;
        }
        return count == 0 ? kMiddle : sum / count;
    }

    static constexpr double kOff = 8;
    static constexpr double kOn = 20;
    static constexpr double kMiddle = (kOff + kOn) / 2;
    static constexpr double kNear = 3;
    rig::XConnection& x_;
    rig::WindowFrame frame_;
};

TEST_F(PanelAppearanceTest, TheOpenPanelStopsMovingWhenThePortalSaysSo) {
    LooksPortal portal(environment(), 2);
    OrvelProgram orvel = start();
    EXPECT_TRUE(run({"panel"}).success());
    EXPECT_TRUE(becomesLight());
    const rig::WindowFrame frame = switchOf("窗口磁吸管理").frame;
    moveTo(frame);
    FilmedSwitch film(desktop().x(), frame);
    const auto moves = [&] { return film.movesWhen([] { mouse().click(rig::Button::left); }); };
    // A busy machine may leave out frames, so one turn alone proves little.
    EXPECT_TRUE(eventually(moves, true));
    portal.change("org.gnome.desktop.interface", "enable-animations", "false");
    EXPECT_TRUE(eventually(moves, false));
    for (int turn = 0; turn < 6; ++turn) EXPECT_FALSE(moves());
    portal.change("org.gnome.desktop.interface", "enable-animations", "true");
    EXPECT_TRUE(eventually(moves, true));
    EXPECT_TRUE(orvel.stop().success());
}

TEST_F(PanelAppearanceTest, WithoutAPortalTheThemeOfGtkCounts) {
    const auto folder = desktop().home().config() / "gtk-3.0";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "settings.ini") << "[Settings]\ngtk-theme-name=Adwaita-dark\n";
    OrvelProgram orvel = start();
    EXPECT_TRUE(run({"panel"}).success());
    EXPECT_TRUE(becomesDark());
    std::filesystem::remove_all(folder);
    EXPECT_TRUE(orvel.stop().success());
}

}  // namespace
}  // namespace orvel::test
