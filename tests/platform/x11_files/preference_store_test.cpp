#include "tests/platform/x11_files/store_fixture.hpp"

#include <filesystem>
#include <sys/stat.h>

namespace orvel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

using PreferenceStoreFile = StoreFixture;

TEST_F(PreferenceStoreFile, LiesInTheConfigurationFolderOfTheUser) {
    EXPECT_EQ(x11::preferencesPath(), home.at(kFile));
    home.unset("XDG_CONFIG_HOME");
    EXPECT_EQ(x11::preferencesPath(), home.at(kFile));
    home.set("XDG_CONFIG_HOME", home.at("elsewhere/"));
    EXPECT_EQ(x11::preferencesPath(), home.at("elsewhere/orvel/preferences.plist"));
    home.set("XDG_CONFIG_HOME", "not/absolute");
    EXPECT_EQ(x11::preferencesPath(), home.at(kFile));
}

TEST_F(PreferenceStoreFile, IsNotMadeByReading) {
    open();
    EXPECT_EQ(value("card_snap"), std::nullopt);
    store.reset();
    EXPECT_FALSE(home.has(".config"));
    EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(PreferenceStoreFile, IsTheUsersAlone) {
    open();
    set("card_snap", true);
    ASSERT_TRUE(store->flush());
    EXPECT_EQ(home.mode(kFile), 0600U);
    EXPECT_EQ(home.mode(".config/orvel"), 0700U);
    EXPECT_EQ(home.mode(".config"), 0700U);
}

TEST_F(PreferenceStoreFile, BecomesTheUsersAloneWithTheFirstWrite) {
    home.write(kFile, plistOf(flagged("card_tab")));
    fs::permissions(home.at(kFile), fs::perms(0644));
    open();
    set("card_snap", true);
    ASSERT_TRUE(store->flush());
    EXPECT_EQ(home.mode(kFile), 0600U);
}

TEST_F(PreferenceStoreFile, LeavesNothingElseInItsFolder) {
    open();
    for (int i = 0; i < 5; ++i) {
        set("card_snap", i % 2 == 0);
        ASSERT_TRUE(store->flush());
    }
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(home.at(".config/orvel"))) {
        names.push_back(entry.path().filename());
    }
    EXPECT_THAT(names, ElementsAre("preferences.plist"));
}

TEST_F(PreferenceStoreFile, HoldsEachTypeUntilTheNextStart) {
    open();
    set("card_snap", true);
    set("NSInitialToolTipDelay", std::int64_t{150});
    set("map_ctrl", "Cmd");
    set("orvel_pinned_apps", StringList{"com.apple.finder", "原"});
    set("orvel_clipboard_history_v2", PreferenceData(300, std::byte{0xC3}));
    open();
    EXPECT_EQ(value("card_snap"), PreferenceValue(true));
    EXPECT_EQ(value("NSInitialToolTipDelay"), PreferenceValue(std::int64_t{150}));
    EXPECT_EQ(value("map_ctrl"), PreferenceValue("Cmd"));
    EXPECT_EQ(value("orvel_pinned_apps"), (PreferenceValue(StringList{"com.apple.finder", "原"})));
    EXPECT_EQ(value("orvel_clipboard_history_v2"),
              PreferenceValue(PreferenceData(300, std::byte{0xC3})));
}

TEST_F(PreferenceStoreFile, AWriteIsReadAtOnceAndARemovalToo) {
    open();
    const PreferenceHandle snap = store->handle("card_snap");
    store->set(snap, true);
    ASSERT_NE(store->value(snap), nullptr);
    EXPECT_EQ(*store->value(snap), PreferenceValue(true));
    store->remove(snap);
    EXPECT_EQ(store->value(snap), nullptr);
    ASSERT_TRUE(store->flush());
    EXPECT_EQ(stored("card_snap"), std::nullopt);
}

TEST_F(PreferenceStoreFile, TheSameKeyHasTheSameHandle) {
    open();
    const PreferenceHandle snap = store->handle("card_snap");
    EXPECT_NE(store->handle("card_tab"), snap);
    EXPECT_EQ(store->handle("card_snap"), snap);
}

TEST_F(PreferenceStoreFile, KeepsWhatOthersPutThere) {
    const std::string theirs =
        "<!-- note --><key>NSWindow Frame</key><dict><key>x</key><real>0.1</real></dict>";
    home.write(kFile, plistOf(theirs));
    open();
    set("card_snap", true);
    ASSERT_TRUE(store->flush());
    EXPECT_THAT(home.read(kFile), HasSubstr(theirs));
}

TEST_F(PreferenceStoreFile, WritingWhatItHoldsLeavesItUntouched) {
    home.write(kFile, plistOf(flagged("card_snap")));
    const auto before = fs::last_write_time(home.at(kFile));
    struct stat info {};
    ASSERT_EQ(stat(home.at(kFile).c_str(), &info), 0);
    open();
    set("card_snap", true);
    ASSERT_TRUE(store->flush());
    struct stat after {};
    ASSERT_EQ(stat(home.at(kFile).c_str(), &after), 0);
    EXPECT_EQ(after.st_ino, info.st_ino);
    EXPECT_EQ(fs::last_write_time(home.at(kFile)), before);
}

TEST_F(PreferenceStoreFile, AChangeByAnotherProgramWakesTheRunLoopAndIsThereAfterRefresh) {
    home.write(kFile, plistOf(flagged("card_snap", false)));
    open();
    EXPECT_EQ(value("card_snap"), PreferenceValue(false));
    store->refresh();
    ASSERT_FALSE(isWoken());
    home.write(kFile, plistOf(flagged("card_snap", true)));
    ASSERT_TRUE(isWoken());
    store->refresh();
    EXPECT_EQ(value("card_snap"), PreferenceValue(true));
    EXPECT_FALSE(isWoken());
}

TEST_F(PreferenceStoreFile, EveryWayToReplaceAFileIsSeen) {
    open();
    expectThatAFileIsSeenToComeChangeAndGo();
    home.write("linked", plistOf(flagged("c")));
    fs::create_hard_link(home.at("linked"), home.at(kFile));
    EXPECT_EQ(refreshedValue("c"), PreferenceValue(true)) << "linked";
    fs::remove_all(home.at(".config"));
    EXPECT_EQ(refreshedValue("c"), std::nullopt) << "deleted with its folders";
    home.write(kFile, plistOf(flagged("d")));
    EXPECT_EQ(refreshedValue("d"), PreferenceValue(true)) << "made again";
    fs::rename(home.at(".config/orvel"), home.at(".config/away"));
    EXPECT_EQ(refreshedValue("d"), std::nullopt) << "folder renamed";
    fs::rename(home.at(".config/away"), home.at(".config/orvel"));
    EXPECT_EQ(refreshedValue("d"), PreferenceValue(true)) << "folder renamed back";
    EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(PreferenceStoreFile, HandlesOutliveTheFile) {
    home.write(kFile, plistOf(flagged("card_snap")));
    open();
    const PreferenceHandle snap = store->handle("card_snap");
    fs::remove(home.at(kFile));
    store->refresh();
    EXPECT_EQ(store->value(snap), nullptr);
    home.write(kFile, plistOf(flagged("card_snap", false)));
    store->refresh();
    ASSERT_NE(store->value(snap), nullptr);
    EXPECT_EQ(*store->value(snap), PreferenceValue(false));
}

TEST_F(PreferenceStoreFile, IsMergedWithWhatWasWrittenMeanwhile) {
    home.write(kFile, plistOf(flagged("a")));
    open();
    home.write(kFile, plistOf(flagged("a", false) + flagged("b")));
    set("c", true);
    ASSERT_TRUE(store->flush());
    EXPECT_EQ(stored("a"), PreferenceValue(false));
    EXPECT_EQ(stored("b"), PreferenceValue(true));
    EXPECT_EQ(stored("c"), PreferenceValue(true));
    store->refresh();
    EXPECT_EQ(value("b"), PreferenceValue(true));
}

TEST_F(PreferenceStoreFile, OwnWritesThatOthersUndoAreUndone) {
    open();
    set("a", true);
    ASSERT_TRUE(store->flush());
    home.write(kFile, plistOf(flagged("a", false)));
    EXPECT_EQ(refreshedValue("a"), PreferenceValue(false));
}

TEST_F(PreferenceStoreFile, WakeUpsOfItsOwnMakingEnd) {
    open();
    set("a", true);
    ASSERT_TRUE(store->flush());
    for (int i = 0; i < 3 && isWoken(); ++i) store->refresh();
    EXPECT_FALSE(isWoken());
    EXPECT_EQ(value("a"), PreferenceValue(true));
}

}  // namespace
}  // namespace orvel::test
