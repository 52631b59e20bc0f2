#include "tests/platform/contract/text_caret_contract.hpp"
#include "tests/session/service_session.hpp"
#include "tests/session/telling_desktop.hpp"

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <csignal>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// The caret of real applications, over a real accessibility bus.

namespace orvel::test {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;
using testing::Eq;
using testing::Optional;

/// Less than any wait.
constexpr milliseconds kAtOnce{10};

std::unique_ptr<TellingDesktop> sharedDesktop;
TellingDesktop& tellingDesktop() {
    if (sharedDesktop == nullptr) sharedDesktop = std::make_unique<TellingDesktop>();
    return *sharedDesktop;
}
rig::EmbeddedDesktop& desktop() { return tellingDesktop().get(); }

/// The desktop goes before the home of this process does.
class DesktopEnd : public testing::Environment {
public:
    void TearDown() override { sharedDesktop.reset(); }
};
const auto* const kDesktopEnd = testing::AddGlobalTestEnvironment(new DesktopEnd);

AxRect frameOf(const Application& application) {
    const auto frame = application.frame();
    return {static_cast<double>(frame.x), static_cast<double>(frame.y),
            static_cast<double>(frame.width), static_cast<double>(frame.height)};
}

Application entryDialog(const std::string& text) {
    return {tellingDesktop(),
            {"zenity", "--entry", "--title", "asked", "--text", "?", "--entry-text", text},
            "asked"};
}

Application lineEdit() {
    return {tellingDesktop(),
            {std::string(std::getenv("ORVEL_BUILD_DIR")) + "/rig/orvel-rig-text-field", "line",
             "plain"},
            "line"};
}

void hang(Application& field) {
    field.process().signal(SIGUSR1);
    EXPECT_TRUE(field.process().out().waitForText("hanging"));
}

class X11TextCaretTest : public testing::Test {
protected:
    X11TextCaretTest() : services_(desktop()) {}

    std::optional<AxRect> caret() {
        services_.settle();
        return services_->textCaret().caretRect();
    }
    /// The caret, as soon as the application tells one that `isWanted` accepts.
    template <class Matcher>
    AxRect caretThat(Matcher isWanted) {
        std::optional<AxRect> last;
        EXPECT_TRUE(eventually([&] { return last = caret(); }, Optional(isWanted)))
            << (last ? last->x : -1) << ',' << (last ? last->y : -1);
        return last.value_or(AxRect{});
    }
    static auto inside(const Application& application) {
        return testing::Truly([frame = frameOf(application)](const AxRect& rect) {
            return frame.contains(rect.origin()) && rect.maxY() <= frame.maxY() && rect.height > 0;
        });
    }
    /// The caret of an application that has come to rest: a window that has just opened moves.
    AxRect caretAtRest(const Application& application) {
        constexpr int enough = 30;
        std::optional<AxRect> last;
        int same = 0;
        const auto look = [&] {
            const auto now = caret();
            same =
                now && now == last && frameOf(application).contains(now->origin()) ? same + 1 : 0;
            last = now;
            return same;
        };
        EXPECT_TRUE(eventually(look, testing::Ge(enough)));
        return caretThat(inside(application));
    }
    static auto rightOf(const AxRect& other) {
        return testing::Truly([other](const AxRect& rect) { return rect.x > other.x; });
    }
    static auto leftOf(const AxRect& other) {
        return testing::Truly([other](const AxRect& rect) { return rect.x < other.x; });
    }
    /// How long asking takes when the machine does nothing else.
    Clock::duration shortestAsking() {
        auto shortest = Clock::duration::max();
        for (int each = 0; each < 10; ++each) {
            const auto start = Clock::now();
            static_cast<void>(services_->textCaret().caretRect());
            shortest = std::min(shortest, Clock::now() - start);
        }
        return shortest;
    }
    static void type(std::string_view text) { desktop().keyboard().type(text); }

    OpenServices services_;
};

TEST_F(X11TextCaretTest, FollowsWhatIsTypedIntoAnEntryOfGtk) {
    const Application dialog = entryDialog("");
    const AxRect empty = caretAtRest(dialog);
    type("typed");
    const AxRect after = caretThat(rightOf(empty));
    EXPECT_EQ(after.y, empty.y);
    EXPECT_EQ(after.height, empty.height);
    desktop().keyboard().tap("Home");
    EXPECT_TRUE(eventually([&] { return caret(); }, Optional(Eq(empty))));
}

TEST_F(X11TextCaretTest, FollowsTheLinesOfAnEditorOfGtk) {
    const Application editor(tellingDesktop(), {"mousepad", "--disable-server"}, "mousepad");
    const AxRect first = caretAtRest(editor);
    type("one\ntwo\n");
    const auto isTwoLinesBelow = testing::Truly([first](const AxRect& rect) {
        return rect.y >= first.y + 2 * first.height && rect.x == first.x;
    });
    caretThat(isTwoLinesBelow);
}

TEST_F(X11TextCaretTest, FollowsWhatIsTypedIntoALineEditOfQt) {
    const Application application = lineEdit();
    const AxRect empty = caretAtRest(application);
    type("w");
    const AxRect one = caretThat(rightOf(empty));
    type("w");
    const AxRect two = caretThat(rightOf(one));
    EXPECT_EQ(two.y, one.y);
    desktop().keyboard().tap("Left");
    // A character's cell and the end of the one before it differ by a pixel.
    caretThat(testing::Truly(
        [one](const AxRect& rect) { return std::abs(rect.x - one.x) <= 1 && rect.y == one.y; }));
}

TEST_F(X11TextCaretTest, FollowsWhatIsTypedIntoAnEditorOfQt) {
    const Application editor(tellingDesktop(), {"featherpad", "--standalone"}, "featherpad");
    const AxRect empty = caretAtRest(editor);
    type("one");
    const AxRect one = caretThat(rightOf(empty));
    type("\n");
    caretThat(testing::AllOf(leftOf(one), testing::Truly([one](const AxRect& rect) {
                                 return rect.y >= one.maxY() - 1;
                             })));
}

TEST_F(X11TextCaretTest, IsFoundInAnApplicationThatHadTheFocusBeforeAndTakesLongToSearch) {
    const Application crowded(
        tellingDesktop(),
        {std::string(std::getenv("ORVEL_BUILD_DIR")) + "/rig/orvel-rig-text-field", "crowded",
         "plain", "800"},
        "crowded");
    OpenServices late(desktop());
    EXPECT_TRUE(eventually(
        late, [&] { return late->textCaret().caretRect(); }, Optional(inside(crowded))));
}

TEST_F(X11TextCaretTest, IsKnownInATerminalThatTellsIt) {
    const Application terminal(tellingDesktop(),
                               {"xfce4-terminal", "--disable-server", "--title", "shell"}, "shell");
    const AxRect prompt = caretAtRest(terminal);
    type("echo");
    caretThat(rightOf(prompt));
}

TEST_F(X11TextCaretTest, IsAbsentInAnApplicationThatTellsNothing) {
    const Application editor = entryDialog("");
    caretThat(inside(editor));
    const Application terminal(tellingDesktop(), {"xterm", "-title", "silent"}, "silent");
    EXPECT_TRUE(eventually([this] { return caret(); }, Eq(std::nullopt)));
}

TEST_F(X11TextCaretTest, AStoppedApplicationCostsNothingAndIsAskedAgainWhenItIsBack) {
    Application dialog = entryDialog("text");
    caretThat(inside(dialog));
    dialog.process().signal(SIGSTOP);
    EXPECT_TRUE(eventually([this] { return shortestAsking(); }, testing::Lt(kAtOnce)));
    EXPECT_EQ(caret(), std::nullopt);
    dialog.process().signal(SIGCONT);
    caretThat(inside(dialog));
}

TEST_F(X11TextCaretTest, AnApplicationThatHangsIsWaitedForOnceAndAskedAgainWhenItIsBack) {
    Application field = lineEdit();
    caretThat(inside(field));
    hang(field);
    const auto start = Clock::now();
    EXPECT_EQ(caret(), std::nullopt);
    // The limit is 30 ms; the rest is for a machine that does other things.
    EXPECT_LT(Clock::now() - start, milliseconds(500));
    EXPECT_LT(shortestAsking(), kAtOnce);
    EXPECT_EQ(caret(), std::nullopt);
    field.process().signal(SIGUSR2);
    caretThat(inside(field));
}

TEST_F(X11TextCaretTest, AnApplicationThatHangsKeepsNoOtherFromBeingAsked) {
    Application dialog = entryDialog("text");
    Application field = lineEdit();
    caretThat(inside(field));
    hang(field);
    EXPECT_EQ(caret(), std::nullopt);
    dialog.focus();
    caretThat(inside(dialog));
    field.process().signal(SIGUSR2);
}

TEST_F(X11TextCaretTest, WithoutAMessageBusThereIsNoneAndNothingWaits) {
    const Application dialog = entryDialog("");
    const ScopedVariable noBus("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus");
    OpenServices alone(desktop());
    alone.settle();
    const auto start = Clock::now();
    EXPECT_EQ(alone->textCaret().caretRect(), std::nullopt);
    EXPECT_LT(Clock::now() - start, milliseconds(600));
    EXPECT_THAT(x11::X11TextCaret::check().remedy, testing::HasSubstr("at-spi2-core"));
}

}  // namespace
}  // namespace orvel::test

namespace orvel::contract {
namespace {

class X11CaretHarness {
public:
    X11CaretHarness() : services_(test::desktop()) {}

    TextCaret& caret() {
        services_.settle();
        return services_->textCaret();
    }
    AxRect focusText() {
        text_ = std::make_unique<test::Application>(test::entryDialog("text"));
        // The application is asked as soon as it has come to rest.
        EXPECT_TRUE(test::eventually([this] { return caret().caretRect().has_value(); },
                                     testing::Eq(true)));
        return test::frameOf(*text_);
    }
    AxRect moveText(double dx, double dy) {
        const auto before = caret().caretRect();
        text_->moveBy(static_cast<int>(dx), static_cast<int>(dy));
        EXPECT_TRUE(test::eventually([this] { return caret().caretRect(); }, testing::Ne(before)));
        return test::frameOf(*text_);
    }
    void focusNoText() {
        text_ = std::make_unique<test::Application>(
            test::tellingDesktop(),
            std::vector<std::string>{"zenity", "--info", "--title", "told", "--text", "!"}, "told");
    }

private:
    test::OpenServices services_;
    std::unique_ptr<test::Application> text_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(X11, TextCaretContract, X11CaretHarness);

}  // namespace
}  // namespace orvel::contract
