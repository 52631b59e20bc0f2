#include "app/record/recorder.hpp"

#include "app/preference_keys.hpp"
#include "platform/memory/memory_desktop.hpp"
#include "tests/support/event_builders.hpp"

#include <gmock/gmock.h>

#include <map>
#include <sstream>
#include <string>

namespace orvel {
namespace {

using testing::HasSubstr;
using testing::Not;

/// Decides when the test says so.
class LateSecrecy final : public TypedSecrecy {
public:
    [[nodiscard]] InputTicket current() const override { return now; }
    [[nodiscard]] Secrecy of(InputTicket ticket) const override {
        const auto decided = verdicts.find(ticket);
        return decided == verdicts.end() ? Secrecy::undecided : decided->second;
    }

    InputTicket now = 0;
    std::map<InputTicket, Secrecy> verdicts{{0, Secrecy::open}};
};

class RecorderTest : public testing::Test {
protected:
    RecorderTest() { recorder.begin(); }

    /// A key at the next moment, which an engine passes.
    void type(KeyCode key) {
        ++secrecy.now;
        Event event = test::keyDown(key);
        recorder.record(event, [](Event&) { return EventVerdict::pass; });
    }
    void decide(InputTicket ticket, Secrecy verdict) {
        secrecy.verdicts[ticket] = verdict;
        recorder.release();
    }
    void store(PreferenceKey key, PreferenceValue value) {
        desk.preferenceStore.set(desk.preferenceStore.handle(preferenceInfo(key).name),
                                 std::move(value));
    }
    static std::string press(KeyCode key) {
        return R"({"event":{"type":"keyDown","key":)" + std::to_string(key) + ",";
    }
    [[nodiscard]] std::string text() const { return out.str(); }

    memory::MemoryDesktop desk;
    std::ostringstream out;
    LateSecrecy secrecy;
    std::optional<std::string> frontmost = "editor";
    Recorder recorder{out,
                      {.runLoop = desk.runLoop,
                       .secrecy = secrecy,
                       .frontmostApplication = [this] { return frontmost; },
                       .settings = desk.preferenceStore}};
};

TEST_F(RecorderTest, WritesNothingThatIsNotDecided) {
    const std::string before = text();
    type(key::a);
    EXPECT_EQ(text(), before);
    decide(1, Secrecy::open);
    EXPECT_THAT(text(), HasSubstr(press(key::a)));
    EXPECT_THAT(text(), HasSubstr(R"(# {"decision":"pass"})"));
}

TEST_F(RecorderTest, KeepsTheOrderWhateverIsDecidedFirst) {
    type(key::a);
    type(key::c);
    decide(2, Secrecy::open);
    EXPECT_THAT(text(), Not(HasSubstr(press(key::c))));
    decide(1, Secrecy::open);
    EXPECT_LT(text().find(press(key::a)), text().find(press(key::c)));
}

TEST_F(RecorderTest, NeverWritesASecretNorWhatFollowedFromIt) {
    type(key::a);
    recorder.effect("log", [](JsonWriter& json) { json.value("said because of it"); });
    type(key::c);
    decide(1, Secrecy::secret);
    decide(2, Secrecy::open);
    EXPECT_THAT(text(), Not(HasSubstr(press(key::a))));
    EXPECT_THAT(text(), Not(HasSubstr("said because of it")));
    EXPECT_THAT(text(), HasSubstr(press(key::c)));
}

TEST_F(RecorderTest, TellsTheTimeAndTheApplicationAlsoAfterASecretHidTheChange) {
    desk.runLoop.advance(std::chrono::seconds(1));
    frontmost = "other";
    type(key::a);
    desk.runLoop.advance(std::chrono::seconds(1));
    type(key::c);
    decide(1, Secrecy::secret);
    decide(2, Secrecy::open);
    EXPECT_THAT(text(), HasSubstr("{\"advance\":2}\n{\"world\":{\"frontmost\":\"other\"}}\n" +
                                  press(key::c)));
}

TEST_F(RecorderTest, TellsTheSettingsOnceUntilOneIsAnother) {
    EXPECT_THAT(text(), HasSubstr(R"({"pref":{}})"));
    store(PreferenceKey::mapCtrl, "Cmd");
    store(PreferenceKey::cardSnap, true);
    type(key::a);
    type(key::c);
    decide(1, Secrecy::open);
    decide(2, Secrecy::open);
    const std::string set = R"({"pref":{"card_snap":true,"map_ctrl":"Cmd"}})";
    EXPECT_THAT(text(), HasSubstr(set + '\n' + press(key::a)));
    EXPECT_EQ(text().find(set), text().rfind(set)) << text();
    store(PreferenceKey::cardSnap, false);
    type(key::a);
    decide(3, Secrecy::open);
    EXPECT_THAT(text(), HasSubstr(R"({"pref":{"card_snap":false,"map_ctrl":"Cmd"}})"
                                  "\n" +
                                  press(key::a)));
}

TEST_F(RecorderTest, NeverTellsTheClipboardHistoryNorWhatItCannotRead) {
    const std::string before = text();
    store(PreferenceKey::clipboardHistory, PreferenceData(3, std::byte{'x'}));
    store(PreferenceKey::cardSnap, ForeignPreference{});
    type(key::a);
    decide(1, Secrecy::open);
    EXPECT_THAT(text().substr(before.size()), testing::StartsWith(press(key::a)));
}

TEST_F(RecorderTest, AnUndecidedMomentHoldsBackSoMuchAndNoMore) {
    constexpr int many = 20'000;
    for (int i = 0; i < many; ++i) type(key::a);
    for (InputTicket ticket = 1; ticket <= many; ++ticket) secrecy.verdicts[ticket] = Secrecy::open;
    recorder.release();
    const auto written = text().size();
    EXPECT_GT(written, 100'000U);
    EXPECT_LT(written, 1'100'000U);
}

}  // namespace
}  // namespace orvel
