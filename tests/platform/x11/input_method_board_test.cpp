#include "platform/x11/input_method_board.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orvel::x11 {
namespace {

InputMethodState stateOf(const std::vector<std::string>& ids, const std::string& current) {
    InputMethodState state;
    for (const auto& id : ids) state.engines.push_back({.id = id, .name = id, .language = {}});
    state.current = current;
    return state;
}

class InputMethodBoardTest : public testing::Test {
protected:
    static constexpr auto kIbus = DaemonKind::ibus;
    static constexpr auto kFcitx = DaemonKind::fcitx;

    std::string current() const {
        const auto offer = board.offer();
        return offer == nullptr ? "no offer" : offer->current;
    }

    InputMethodBoard board;
};

TEST_F(InputMethodBoardTest, OffersNothingUntilADaemonHasAChoice) {
    EXPECT_EQ(board.offer(), nullptr);
    board.tell(kIbus, stateOf({"ibus:en"}, "ibus:en"), 0);
    EXPECT_EQ(board.offer(), nullptr);
    EXPECT_EQ(board.presence(kIbus), DaemonPresence::answering);
    board.tell(kIbus, stateOf({"ibus:en", "ibus:zh"}, "ibus:en"), 0);
    EXPECT_EQ(current(), "ibus:en");
}

TEST_F(InputMethodBoardTest, PrefersFcitxWhileItAnswers) {
    board.tell(kIbus, stateOf({"ibus:en", "ibus:zh"}, "ibus:en"), 0);
    board.tell(kFcitx, stateOf({"fcitx:en", "fcitx:zh"}, "fcitx:zh"), 0);
    EXPECT_EQ(current(), "fcitx:zh");
    board.setPresence(kFcitx, DaemonPresence::silent);
    EXPECT_EQ(current(), "ibus:en");
    board.setPresence(kIbus, DaemonPresence::absent);
    EXPECT_EQ(board.offer(), nullptr);
}

TEST_F(InputMethodBoardTest, ASelectionShowsAtOnceAndOutlivesWhatWasAskedBefore) {
    board.tell(kIbus, stateOf({"ibus:en", "ibus:zh"}, "ibus:en"), 0);
    const auto selection = board.select("ibus:zh");
    ASSERT_TRUE(selection);
    EXPECT_EQ(current(), "ibus:zh");
    board.tell(kIbus, stateOf({"ibus:en", "ibus:zh"}, "ibus:en"), 0);
    EXPECT_EQ(current(), "ibus:zh");
    board.tell(kIbus, stateOf({"ibus:en", "ibus:zh"}, "ibus:en"), selection->number);
    EXPECT_EQ(current(), "ibus:en");
}

TEST_F(InputMethodBoardTest, ASelectionDoesNotOutliveItsEngine) {
    board.tell(kIbus, stateOf({"ibus:en", "ibus:zh"}, "ibus:en"), 0);
    board.select("ibus:zh");
    board.tell(kIbus, stateOf({"ibus:en", "ibus:ja"}, "ibus:en"), 0);
    EXPECT_EQ(current(), "ibus:en");
}

TEST_F(InputMethodBoardTest, SelectsOnlyWhatTheDaemonThatCountsHas) {
    board.tell(kIbus, stateOf({"ibus:en", "ibus:zh"}, "ibus:en"), 0);
    EXPECT_FALSE(board.select("xkb:us"));
    board.tell(kFcitx, stateOf({"fcitx:en", "fcitx:zh"}, "fcitx:en"), 0);
    EXPECT_FALSE(board.select("ibus:zh"));
    EXPECT_EQ(board.select("fcitx:zh")->daemon, kFcitx);
}

}  // namespace
}  // namespace orvel::x11
