#include "tests/session/key_delays.hpp"
#include "tests/session/tap_session.hpp"
#include "tests/session/telling_desktop.hpp"

#include <gmock/gmock.h>

#include <csignal>
#include <cstdlib>
#include <string>

// Keys while each of them asks an application for its caret.

namespace orvel::test {
namespace {

using std::chrono::milliseconds;
using testing::HasSubstr;
using testing::Not;

/// Noise of a machine that does other things.
constexpr milliseconds kRoom{40};

class CaretKeyDelay : public testing::Test {
protected:
    CaretKeyDelay() : host_(desktop_.get().environment()) { host_.tell("carets"); }
    void TearDown() override { host_.quit(); }

    Application openTextField() {
        return {desktop_,
                {std::string(std::getenv("ORVEL_BUILD_DIR")) + "/rig/orvel-rig-text-field", "line",
                 "plain"},
                "line"};
    }
    /// What the asking for carets brought since the last look.
    std::string told() {
        const std::string all = host_.process().out().text();
        const std::string news = all.substr(seen_);
        seen_ = all.size();
        return news;
    }
    /// What typing a key brings.
    std::string typed() {
        static_cast<void>(told());
        static_cast<void>(delays_.of("k"));
        return told();
    }
    /// Types until the caret is told, or is not.
    void expectCaret() {
        EXPECT_TRUE(eventually([this] { return typed(); }, HasSubstr("\ncaret\n")));
    }
    void expectNoCaret() {
        EXPECT_TRUE(eventually([this] { return typed(); }, Not(HasSubstr("\ncaret\n"))));
    }
    /// Stops and continues an application by these signals.
    void expectKeysWithout(int stop, int go) {
        Application field = openTextField();
        expectCaret();
        const auto usual = delays_.median();
        field.process().signal(stop);
        expectNoCaret();
        EXPECT_LT(delays_.median(), 3 * usual + kRoom);
        EXPECT_THAT(told(), Not(HasSubstr("\ncaret\n")));
        field.process().signal(go);
        expectCaret();
    }

    TellingDesktop desktop_;
    KeyDelays delays_{desktop_.get()};
    TapHost host_;
    std::size_t seen_ = 0;
};

TEST_F(CaretKeyDelay, AStoppedApplicationHoldsNoKeyUpAndTellsItsCaretWhenItGoesOn) {
    expectKeysWithout(SIGSTOP, SIGCONT);
}

TEST_F(CaretKeyDelay, AnApplicationThatHangsHoldsKeysUpOnceAndTellsItsCaretWhenItGoesOn) {
    expectKeysWithout(SIGUSR1, SIGUSR2);
}

TEST_F(CaretKeyDelay, KeysKeepTheirOrderWhileAnApplicationHangs) {
    Application field = openTextField();
    expectCaret();
    for (const int signal : {SIGUSR1, SIGSTOP}) {
        desktop_.get().keyboard().tap("Return");
        field.process().signal(signal);
        desktop_.get().keyboard().type("the quick brown fox jumps over the lazy dog");
        desktop_.get().keyboard().tap("Return");
        field.process().signal(signal == SIGUSR1 ? SIGUSR2 : SIGCONT);
        EXPECT_TRUE(eventually([&] { return field.process().out().text(); },
                               HasSubstr("typed the quick brown fox jumps over the lazy dog\n")));
    }
}

}  // namespace
}  // namespace orvel::test
