#include "tests/session/service_session.hpp"
#include "tests/session/telling_desktop.hpp"
#include "tools/rig/orvel_program.hpp"

#include <gmock/gmock.h>

#include <csignal>
#include <cstdlib>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

// Passwords typed into real fields without any pause after the focus moved there, while the
// program records and traces what is typed.

namespace orvel::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// None of its letters occurs in the texts that may be recorded.
constexpr const char* kPassword = "qzxjvkqzxj";
/// Its last letters.
constexpr const char* kEnd = "kqzxj";

/// The letters of the keys that were pressed in these steps.
std::string lettersIn(const std::string& steps) {
    static const std::map<int, char> letters{{0, 'a'},  {3, 'f'},  {6, 'z'},  {7, 'x'},  {9, 'v'},
                                             {11, 'b'}, {12, 'q'}, {13, 'w'}, {14, 'e'}, {15, 'r'},
                                             {17, 't'}, {31, 'o'}, {38, 'j'}, {40, 'k'}};
    static const std::string press = R"({"event":{"type":"keyDown","key":)";
    std::string typed;
    for (auto at = steps.find(press); at != std::string::npos; at = steps.find(press, at + 1)) {
        const auto letter = letters.find(std::atoi(steps.c_str() + at + press.size()));
        if (letter != letters.end()) typed += letter->second;
    }
    return typed;
}

enum class Toolkit { gtk, qt };

class TypedSecrets : public testing::TestWithParam<Toolkit> {
protected:
    static void SetUpTestSuite() { telling = std::make_unique<TellingDesktop>(); }
    static void TearDownTestSuite() { telling.reset(); }

    void SetUp() override {
        rig::writeSettings(desktop().environment(), {{"card_eject", true}});
        before_ = filesWithPieces();
    }
    void TearDown() override { forgetTheRun(); }

    static rig::EmbeddedDesktop& desktop() { return telling->get(); }
    static rig::Keyboard& keyboard() { return desktop().keyboard(); }
    static std::filesystem::path record() { return desktop().home().path() / "typed.jsonl"; }
    static std::filesystem::path trace() { return desktop().home().state() / "orvel/trace.log"; }
    static std::string recorded() { return lettersIn(rig::contentOf(record())); }
    static std::string program() {
        return std::string(std::getenv("ORVEL_BUILD_DIR")) + "/orvel-session";
    }

    void start() {
        orvel_ = std::make_unique<rig::ChildProcess>(rig::Command{
            .arguments = {program(), "record", "--trace", "--yes-record-keys", record().string()},
            .environment = desktop().environment()});
        ASSERT_TRUE(orvel_->out().waitForText("引擎工作状态已设为")) << orvel_->err().text();
    }
    /// A window with a plain text field, which has the keyboard, above one for a password.
    static Application openForm() {
        if (GetParam() == Toolkit::gtk) {
            return {*telling,
                    {"zenity", "--forms", "--title", "form", "--text", "?", "--add-entry", "plain",
                     "--add-password", "secret"},
                    "form"};
        }
        return {*telling, {client(), "form", "both"}, "form"};
    }
    static std::string client() {
        return std::string(std::getenv("ORVEL_BUILD_DIR")) + "/rig/orvel-rig-text-field";
    }
    /// What the fields of a form got in the end.
    static std::string textsOf(Application& form, const std::string& expected = kPassword,
                               bool isForm = true) {
        // Return in the field of a form of zenity does nothing; its second button is reached so.
        if (isForm && GetParam() == Toolkit::gtk)
            for (int i = 0; i < 2; ++i) keyboard().tap("Tab");
        keyboard().tap("Return");
        const auto line = form.process().out().waitForText(expected);
        return line.value_or("");
    }
    /// Types ordinary text until it is known where it goes, and then a word that is kept whole.
    static void typeWhatIsKept(const std::string& word) {
        const auto count = recorded().size();
        const auto type = [] {
            keyboard().type("w");
            return recorded().size();
        };
        ASSERT_TRUE(eventually(type, testing::Gt(count)));
        keyboard().type(word);
        EXPECT_TRUE(eventually(recorded, HasSubstr(word)));
    }
    /// The middle of the password field, found by going there once.
    static rig::WindowFrame findPasswordField(Application& form) {
        OpenServices services(desktop());
        const auto caret = [&] {
            services.settle();
            return services->textCaret().caretRect();
        };
        form.focus();
        EXPECT_TRUE(eventually(caret, testing::Ne(std::nullopt)));
        const auto plain = caret();
        keyboard().tap("Tab");
        const auto isBelow = [&] {
            const auto now = caret();
            return now && plain && now->y > plain->y;
        };
        EXPECT_TRUE(eventually(isBelow, testing::Eq(true)));
        const AxRect field = caret().value_or(AxRect{});
        keyboard().chord({"Shift_L", "Tab"});
        EXPECT_TRUE(eventually(caret, plain));
        return {static_cast<int>(field.x) + 10, static_cast<int>(field.midY()), 1, 1};
    }
    /// Clicks into the field and types at once. A window manager may hold the click back for so
    /// long that the letters go where the focus was before: false then.
    bool typePasswordAfterClick(Application& form, const rig::WindowFrame& field) {
        desktop().state().warpPointer({field.x, field.y});
        desktop().mouse().click(rig::Button::left);
        keyboard().chord({"Shift_L", "BackSpace"});
        keyboard().type(kPassword);
        const std::string texts = textsOf(form, kEnd);
        const std::string secret = texts.substr(texts.rfind('|') + 1);
        return secret.find(kEnd) != std::string::npos && secret.find("before") == std::string::npos;
    }
    void forgetTheRun() {
        orvel_.reset();
        std::filesystem::remove(record());
        std::filesystem::remove(trace());
    }
    /// Every file of the home that holds three letters of the password in a row.
    static std::set<std::string> filesWithPieces() {
        std::set<std::string> found;
        const std::string password = kPassword;
        for (std::size_t at = 0; at + 3 <= password.size(); ++at) {
            for (const auto& file : desktop().home().filesContaining(password.substr(at, 3)))
                found.insert(file.string());
        }
        return found;
    }
    /// What was typed later is kept by now, and the order of the lines stays: the password is
    /// decided about.
    void expectNothingOfThePassword() {
        EXPECT_THAT(recorded(), Not(testing::ContainsRegex("[qzxjvk]")));
        EXPECT_THAT(filesWithPieces(), testing::IsSubsetOf(before_));
        orvel_->signal(SIGTERM);
        EXPECT_EQ(orvel_->waitForExit(), (rig::ExitStatus{.code = 0, .signal = {}}));
        EXPECT_THAT(recorded(), Not(testing::ContainsRegex("[qzxjvk]")));
        EXPECT_THAT(orvel_->out().text() + orvel_->err().text(), Not(HasSubstr("qzx")));
    }

    static inline std::unique_ptr<TellingDesktop> telling;
    std::unique_ptr<rig::ChildProcess> orvel_;
    std::set<std::string> before_;
};

TEST_P(TypedSecrets, NothingIsKeptOfAPasswordTypedAtOnceAfterAClickIntoItsField) {
    constexpr int attempts = 5;
    for (int i = 0; i < attempts; ++i, forgetTheRun()) {
        Application form = openForm();
        const auto field = findPasswordField(form);
        start();
        const auto traced = [] { return rig::contentOf(trace()); };
        const auto rewrite = [&] {
            keyboard().chord({"Shift_L", "BackSpace"});
            return traced();
        };
        EXPECT_TRUE(eventually(rewrite, Not(IsEmpty())));
        typeWhatIsKept("before");
        const std::string whole = traced();
        if (!typePasswordAfterClick(form, field)) continue;
        Application other(*telling, {"zenity", "--entry", "--title", "other"}, "other");
        typeWhatIsKept("after");
        EXPECT_EQ(traced(), whole);
        return expectNothingOfThePassword();
    }
    FAIL() << "the click never reached the field before the letters";
}

TEST_P(TypedSecrets, NothingIsKeptOfAPasswordTypedAtOnceAfterTab) {
    Application form = openForm();
    start();
    typeWhatIsKept("before");
    keyboard().tap("Tab");
    keyboard().type(kPassword);
    EXPECT_THAT(textsOf(form), HasSubstr(kPassword));
    Application other(*telling, {"zenity", "--entry", "--title", "other"}, "other");
    typeWhatIsKept("after");
    expectNothingOfThePassword();
}

TEST_P(TypedSecrets, NothingIsKeptOfAPasswordTypedAtOnceIntoAWindowThatOpens) {
    Application plain(*telling, {"zenity", "--entry", "--title", "other"}, "other");
    start();
    typeWhatIsKept("before");
    {
        Application asking =
            GetParam() == Toolkit::gtk
                ? Application(*telling, {"zenity", "--password", "--title", "asking"}, "asking")
                : Application(*telling, {client(), "asking", "password"}, "asking");
        keyboard().type(kPassword);
        EXPECT_THAT(textsOf(asking, kPassword, false), HasSubstr(kPassword));
    }
    plain.focus();
    typeWhatIsKept("after");
    expectNothingOfThePassword();
}

INSTANTIATE_TEST_SUITE_P(Each, TypedSecrets, testing::Values(Toolkit::gtk, Toolkit::qt),
                         [](const auto& toolkit) {
                             return toolkit.param == Toolkit::gtk ? "Gtk" : "Qt";
                         });

}  // namespace
}  // namespace orvel::test
