#include "tests/session/tap_session.hpp"
#include "tests/support/poll_until.hpp"
#include "tools/rig/input_method.hpp"
#include "tools/rig/orvel_program.hpp"
#include "tools/rig/xterm_app.hpp"

#include <chrono>
#include <csignal>
#include <memory>
#include <string>
#include <vector>

namespace orvel::test {
namespace {

using rig::InputMethod;
using testing::HasSubstr;

/// The program beside a real input method daemon, typed into from the device.
class InputMethodHabits : public TapSessionTest,
                          public testing::WithParamInterface<InputMethod::Kind> {
protected:
    void SetUp() override {
        rig::writeSettings(desktop().environment(), {{"card_shift", true}});
        method_ = std::make_unique<InputMethod>(GetParam(), desktop().environment(), desktop().x());
        terminal_ = std::make_unique<rig::XtermApp>(desktop().home(), method_->environment(),
                                                    desktop().x());
        orvel_ = std::make_unique<rig::OrvelProgram>(ORVEL_PROGRAM, method_->environment());
        // It looks for daemons beside everything else and says at the next input what it found.
        const auto said = [this] {
            keyboard().tap("Control_L");
            return orvel_->process().out().text();
        };
        ASSERT_TRUE(eventually(said, HasSubstr("输入法切换: ")));
    }
    void TearDown() override {
        if (orvel_) orvel_->stop();
        terminal_.reset();
        method_.reset();
        TapSessionTest::TearDown();
    }

    void tapShiftUntil(const std::string& engine) {
        keyboard().tap("Shift_L");
        EXPECT_TRUE(staysOn(engine));
    }
    /// An application has an engine a moment after the daemon says that it is selected; a person
    /// does not type the next key within that moment.
    testing::AssertionResult staysOn(const std::string& engine) {
        constexpr std::chrono::milliseconds kMoment{400};
        auto since = std::chrono::steady_clock::now();
        return eventually(
            [&] {
                const auto now = std::chrono::steady_clock::now();
                if (method_->current() != engine) since = now;
                return now - since;
            },
            testing::Ge(kMoment));
    }
    std::string english() const { return InputMethod::english(GetParam()); }
    void expectReceived(const std::string& text) {
        EXPECT_TRUE(eventually([this] { return terminal_->received(); }, text))
            << orvel_->process().out().text();
    }

    std::unique_ptr<InputMethod> method_;
    std::unique_ptr<rig::XtermApp> terminal_;
    std::unique_ptr<rig::OrvelProgram> orvel_;
};

INSTANTIATE_TEST_SUITE_P(Each, InputMethodHabits,
                         testing::Values(InputMethod::Kind::ibus, InputMethod::Kind::fcitx),
                         [](const auto& param) {
                             return param.param == InputMethod::Kind::ibus ? "ibus" : "fcitx";
                         });

TEST_P(InputMethodHabits, ALoneShiftTapSwitchesBetweenEnglishAndChinese) {
    keyboard().type("ab");
    expectReceived("ab");
    tapShiftUntil(InputMethod::kChinese);
    keyboard().type("su3cl3\n");
    expectReceived("ab你好");
    tapShiftUntil(english());
    keyboard().type("cd");
    expectReceived("ab你好cd");
    tapShiftUntil(InputMethod::kChinese);
    keyboard().type("su3\n");
    expectReceived("ab你好cd你");
}

TEST_P(InputMethodHabits, CapsLockTypesEnglishWhileChineseIsOn) {
    tapShiftUntil(InputMethod::kChinese);
    keyboard().tap("Caps_Lock");
    EXPECT_TRUE(staysOn(english()));
    keyboard().type("q");
    expectReceived("Q");
    keyboard().tap("Caps_Lock");
    EXPECT_TRUE(staysOn(InputMethod::kChinese));
    keyboard().type("su3\n");
    expectReceived("Q你");
}

TEST_P(InputMethodHabits, AShiftThatCapitalisesSwitchesNothing) {
    keyboard().type("aBc");
    expectReceived("aBc");
    EXPECT_EQ(method_->current(), english());
}

TEST_P(InputMethodHabits, ADaemonThatHangsStopsNoShortcut) {
    rig::KeyProbe probe = startProbe();
    method_->process().signal(SIGSTOP);
    keyboard().tap("Shift_L");
    keyboard().type("x");
    // No method takes the tap for a command of its own besides.
    EXPECT_EQ(
        spelled(probe.waitForKeys(6)),
        (std::vector<std::string>{"+Shift_L", "+neutral", "-neutral", "-Shift_L", "+x", "-x"}));
    method_->process().signal(SIGCONT);
}

TEST_P(InputMethodHabits, AnEngineThatTheUserAddsCanBeSwitchedTo) {
    if (GetParam() == InputMethod::Kind::fcitx) return;
    InputMethod::choose({english(), "xkb:ru::rus"}, method_->environment());
    // Until the program has heard of it, the tap goes to the engine that was there before.
    const auto tapped = [this] {
        keyboard().tap("Shift_L");
        return method_->current();
    };
    EXPECT_TRUE(eventually(tapped, "xkb:ru::rus"));
}

}  // namespace
}  // namespace orvel::test
