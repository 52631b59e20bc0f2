#include "platform/x11/input_methods.hpp"
#include "tests/platform/contract/input_sources_contract.hpp"
#include "tests/session/service_session.hpp"
#include "tests/session/shell_desktop.hpp"
#include "tools/rig/input_method.hpp"
#include "tools/rig/xterm_app.hpp"

#include <gmock/gmock.h>

#include <chrono>
#include <csignal>
#include <memory>
#include <string>

namespace orvel::test {
namespace {

using rig::InputMethod;
using testing::Eq;
using testing::HasSubstr;
using testing::StartsWith;

rig::EmbeddedDesktop& desktop() { return ShellDesktop::get(); }

const char* prefixOf(InputMethod::Kind kind) {
    return kind == InputMethod::Kind::ibus ? "ibus:" : "fcitx:";
}

/// The library reads the settings file for the first thread that asks and follows it for that one
/// alone: what the tests need stands there from the start.
class ChosenBefore : public testing::Environment {
    void SetUp() override {
        InputMethod::choose({InputMethod::english(InputMethod::Kind::ibus), InputMethod::kChinese},
                            desktop().environment());
    }
};
const auto* const chosenBefore = testing::AddGlobalTestEnvironment(new ChosenBefore);

/// Layouts of the keyboard, where no daemon runs.
class LayoutHarness {
public:
    LayoutHarness() {
        desktop().server().setLayout("us,ru");
        desktop().state().lockLayoutGroup(0);
        EXPECT_TRUE(eventually(
            services_, [this] { return sources().selectable().size(); }, Eq(2U)));
    }
    ~LayoutHarness() {
        desktop().state().lockLayoutGroup(0);
        desktop().server().setLayout("us");
    }
    LayoutHarness(const LayoutHarness&) = delete;
    LayoutHarness& operator=(const LayoutHarness&) = delete;

    InputSources& sources() { return services_->inputSources(); }
    void selectFromOutside(const std::string& id) {
        desktop().state().lockLayoutGroup(id == "xkb:ru" ? 1 : 0);
    }
    bool settlesOn(const std::string& id) {
        const int group = id == "xkb:ru" ? 1 : 0;
        return eventually([] { return desktop().state().layoutGroup(); }, Eq(group)) &&
               eventually(
                   services_, [this] { return sources().current()->id; }, Eq(id));
    }

private:
    OpenServices services_{desktop()};
};

/// A real daemon and an application that is typed into through it.
template <InputMethod::Kind kind>
class DaemonHarness {
public:
    DaemonHarness() {
        EXPECT_TRUE(eventually(
            services_, [this] { return sources().current()->id; },
            Eq(prefixOf(kind) + std::string(InputMethod::english(kind)))));
    }

    InputSources& sources() { return services_->inputSources(); }
    void selectFromOutside(const std::string& id) {
        method_.select(id.substr(std::string(prefixOf(kind)).size()));
    }
    bool settlesOn(const std::string& id) {
        const bool isDone = eventually(
            services_, [this] { return prefixOf(kind) + method_.current(); }, Eq(id));
        return isDone && eventually(
                             services_, [this] { return sources().current()->id; }, Eq(id));
    }

private:
    InputMethod method_{kind, desktop().environment(), desktop().x()};
    rig::XtermApp terminal_{desktop().home(), method_.environment(), desktop().x()};
    OpenServices services_{desktop()};
};

/// What becomes of our services when a daemon comes, goes and hangs.
class Daemons : public testing::TestWithParam<InputMethod::Kind> {
protected:
    void startDaemon() {
        method_ = std::make_unique<InputMethod>(GetParam(), desktop().environment(), desktop().x());
        terminal_ = std::make_unique<rig::XtermApp>(desktop().home(), method_->environment(),
                                                    desktop().x());
        // Fcitx has nothing to switch before the terminal takes text.
        ASSERT_TRUE(eventually(
            services_, [this] { return method_->current(); },
            Eq(std::string(InputMethod::english(GetParam())))));
    }
    std::string current() {
        const auto source = services_->inputSources().current();
        return source ? source->id : "none";
    }
    testing::AssertionResult becomes(const testing::Matcher<std::string>& matcher) {
        return eventually(
            services_, [this] { return current(); }, matcher);
    }
    std::string english() const {
        return prefixOf(GetParam()) + std::string(InputMethod::english(GetParam()));
    }
    std::string chinese() const {
        return prefixOf(GetParam()) + std::string(InputMethod::kChinese);
    }

    OpenServices services_{desktop()};
    std::unique_ptr<InputMethod> method_;
    std::unique_ptr<rig::XtermApp> terminal_;
};

INSTANTIATE_TEST_SUITE_P(Each, Daemons,
                         testing::Values(InputMethod::Kind::ibus, InputMethod::Kind::fcitx),
                         [](const auto& param) {
                             return param.param == InputMethod::Kind::ibus ? "ibus" : "fcitx";
                         });

TEST_P(Daemons, OneThatStartsLaterIsUsedAndOneThatDiesIsNot) {
    EXPECT_EQ(current(), "xkb:us");
    startDaemon();
    EXPECT_TRUE(becomes(Eq(english())));
    services_->inputSources().select(chinese());
    EXPECT_TRUE(eventually(
        services_, [this] { return method_->current(); }, Eq(std::string(InputMethod::kChinese))));
    method_->kill();
    EXPECT_TRUE(becomes(Eq("xkb:us")));
    terminal_.reset();
    method_->start();
    terminal_ =
        std::make_unique<rig::XtermApp>(desktop().home(), method_->environment(), desktop().x());
    EXPECT_TRUE(becomes(StartsWith(prefixOf(GetParam()))));
    method_->select(InputMethod::kChinese);
    EXPECT_TRUE(becomes(Eq(chinese())));
}

TEST_P(Daemons, OneThatHangsHoldsNothingUpAndIsUsedAgainWhenItAnswers) {
    startDaemon();
    ASSERT_TRUE(becomes(Eq(english())));
    method_->process().signal(SIGSTOP);
    const auto begin = std::chrono::steady_clock::now();
    for (int turn = 0; turn < 20; ++turn) {
        services_->inputSources().select(turn % 2 == 0 ? chinese() : english());
        services_->catchUp();
        static_cast<void>(services_->inputSources().selectable());
    }
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(1));
    // Layouts can still be switched meanwhile.
    EXPECT_TRUE(becomes(Eq("xkb:us")));
    method_->process().signal(SIGCONT);
    EXPECT_TRUE(becomes(StartsWith(prefixOf(GetParam()))));
    services_->inputSources().select(chinese());
    EXPECT_TRUE(eventually(
        services_, [this] { return method_->current(); }, Eq(std::string(InputMethod::kChinese))));
}

TEST_P(Daemons, AHangingOneDoesNotDelayTheEnd) {
    startDaemon();
    ASSERT_TRUE(becomes(Eq(english())));
    auto methods = std::make_unique<x11::InputMethods>();
    ASSERT_TRUE(eventually([&] { return methods->offer() != nullptr; }, true));
    method_->process().signal(SIGSTOP);
    EXPECT_TRUE(methods->select(chinese()));
    const auto begin = std::chrono::steady_clock::now();
    methods.reset();
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(3));
    method_->process().signal(SIGCONT);
}

TEST_P(Daemons, TheDoctorNamesWhatShiftSwitchesBetween) {
    startDaemon();
    EXPECT_THAT(x11::InputMethods().check().finding,
                testing::AllOf(HasSubstr("English (US) (en)"), HasSubstr("(zh_TW)")));
    method_->process().signal(SIGSTOP);
    const auto check = x11::InputMethods().check();
    EXPECT_FALSE(check.isOk);
    EXPECT_THAT(check.finding, HasSubstr("does not answer"));
    EXPECT_THAT(check.remedy, HasSubstr("start"));
    method_->process().signal(SIGCONT);
}

TEST(InputMethods, WithoutADaemonTheDoctorSaysSo) {
    EXPECT_THAT(x11::InputMethods().check().finding, HasSubstr("neither"));
}

}  // namespace
}  // namespace orvel::test

namespace orvel::contract {
namespace {

using IbusHarness = test::DaemonHarness<rig::InputMethod::Kind::ibus>;
using FcitxHarness = test::DaemonHarness<rig::InputMethod::Kind::fcitx>;

INSTANTIATE_TYPED_TEST_SUITE_P(Layouts, InputSourcesContract, test::LayoutHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Ibus, InputSourcesContract, IbusHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Fcitx, InputSourcesContract, FcitxHarness);

}  // namespace
}  // namespace orvel::contract
