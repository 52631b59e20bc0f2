#include "tests/session/service_session.hpp"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace orvel::test {
namespace {

using testing::ElementsAre;
using testing::Eq;

class X11InputSources : public testing::Test {
protected:
    static void SetUpTestSuite() { shared = std::make_unique<rig::EmbeddedDesktop>(); }
    static void TearDownTestSuite() { shared.reset(); }

    std::vector<std::string> ids() {
        std::vector<std::string> found;
        for (const auto& source : sources().selectable()) found.push_back(source.id);
        return found;
    }
    std::string current() {
        const auto source = sources().current();
        return source ? source->id : "none";
    }
    InputSources& sources() { return services_->inputSources(); }
    void setLayout(const std::string& layouts) { shared->server().setLayout(layouts); }

    static inline std::unique_ptr<rig::EmbeddedDesktop> shared;
    OpenServices services_{*shared};
};

TEST_F(X11InputSources, ListsTheLayoutsInTheirOrderAndFollowsANewKeymap) {
    setLayout("us,ru");
    EXPECT_TRUE(eventually(
        services_, [&] { return ids(); }, ElementsAre("xkb:us", "xkb:ru")));
    setLayout("de,us,gr");
    EXPECT_TRUE(eventually(
        services_, [&] { return ids(); }, ElementsAre("xkb:de", "xkb:us", "xkb:gr")));
}

TEST_F(X11InputSources, OnlyLayoutsWithLatinLettersAreAsciiCapable) {
    setLayout("us,ru,de,gr");
    ASSERT_TRUE(eventually(
        services_, [&] { return ids().size(); }, Eq(4U)));
    std::vector<bool> capable;
    for (const auto& source : sources().selectable()) capable.push_back(*source.isAsciiCapable);
    EXPECT_THAT(capable, ElementsAre(true, false, true, false));
}

TEST_F(X11InputSources, SelectingALayoutLocksItsGroup) {
    setLayout("us,ru");
    ASSERT_TRUE(eventually(
        services_, [&] { return ids().size(); }, Eq(2U)));
    sources().select("xkb:ru");
    EXPECT_EQ(current(), "xkb:ru");
    EXPECT_TRUE(eventually([] { return shared->state().layoutGroup(); }, Eq(1)));
    sources().select("xkb:us");
    EXPECT_TRUE(eventually([] { return shared->state().layoutGroup(); }, Eq(0)));
    services_.settle();
    EXPECT_EQ(current(), "xkb:us");
}

TEST_F(X11InputSources, FollowsALayoutThatSomebodyElseSelects) {
    setLayout("us,ru");
    ASSERT_TRUE(eventually(
        services_, [&] { return ids().size(); }, Eq(2U)));
    shared->state().lockLayoutGroup(1);
    EXPECT_TRUE(eventually(
        services_, [&] { return current(); }, Eq("xkb:ru")));
    shared->state().lockLayoutGroup(0);
    EXPECT_TRUE(eventually(
        services_, [&] { return current(); }, Eq("xkb:us")));
}

TEST_F(X11InputSources, AnUnknownSourceChangesNothing) {
    setLayout("us,ru");
    ASSERT_TRUE(eventually(
        services_, [&] { return ids().size(); }, Eq(2U)));
    sources().select("xkb:nonsense");
    EXPECT_EQ(current(), "xkb:us");
}

TEST(LayoutIds, JoinLayoutAndVariant) {
    EXPECT_THAT(x11::layoutIdsFrom("us,de", ",nodeadkeys"),
                ElementsAre("xkb:us", "xkb:de:nodeadkeys"));
    EXPECT_THAT(x11::layoutIdsFrom("us", ""), ElementsAre("xkb:us"));
}

}  // namespace
}  // namespace orvel::test
