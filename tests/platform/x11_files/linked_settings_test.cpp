#include "tests/platform/x11_files/store_fixture.hpp"

#include <filesystem>
#include <unistd.h>

namespace orvel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

/// Settings kept in a folder of dotfiles, with a link where programs look for them.
class LinkedSettings : public StoreFixture {
protected:
    void link(const std::string& target, std::string_view name = kFile) {
        fs::create_directories(fs::path(home.at(name)).parent_path());
        fs::create_symlink(target, home.at(name));
    }
    /// As `ln -sfn` and the managers of dotfiles do it: the new link is renamed over the old one.
    void relink(const std::string& target, std::string_view name = kFile) {
        fs::create_symlink(target, home.at("link-on-its-way"));
        fs::rename(home.at("link-on-its-way"), home.at(name));
    }
    std::vector<std::string> namesIn(std::string_view folder) {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(home.at(folder)))
            names.push_back(entry.path().filename());
        return names;
    }
};

TEST_F(LinkedSettings, TheLinkStaysAndItsTargetChanges) {
    home.write("dots/orvel.plist", plistOf(flagged("card_snap")));
    link(home.at("dots/orvel.plist"));
    open();
    EXPECT_EQ(value("card_snap"), PreferenceValue(true));
    set("card_snap", false);
    ASSERT_TRUE(store->flush());
    EXPECT_EQ(fs::read_symlink(home.at(kFile)), home.at("dots/orvel.plist"));
    EXPECT_EQ(home.read("dots/orvel.plist"), plistOf(flagged("card_snap", false)));
    EXPECT_THAT(namesIn("dots"), ElementsAre("orvel.plist"));
    EXPECT_THAT(namesIn(".config/orvel"), ElementsAre("preferences.plist"));
}

TEST_F(LinkedSettings, ARelativeLinkAndAChainOfLinksAreFollowed) {
    home.write("dots/real.plist", plistOf(flagged("a")));
    link("real.plist", "dots/alias.plist");
    link("../../dots/./alias.plist");
    open();
    EXPECT_EQ(value("a"), PreferenceValue(true));
    set("b", true);
    ASSERT_TRUE(store->flush());
    EXPECT_TRUE(fs::is_symlink(home.at("dots/alias.plist")));
    EXPECT_FALSE(fs::is_symlink(home.at("dots/real.plist")));
    EXPECT_THAT(home.read("dots/real.plist"), HasSubstr("<key>b</key>"));
}

TEST_F(LinkedSettings, AChangeOfTheTargetIsSeen) {
    home.write("dots/orvel.plist", plistOf(flagged("a")));
    link(home.at("dots/orvel.plist"));
    open();
    home.write("dots/orvel.plist", plistOf(flagged("a", false)));
    ASSERT_TRUE(isWoken());
    EXPECT_EQ(refreshedValue("a"), PreferenceValue(false)) << "written in place";
    home.write("dots/new", plistOf(flagged("b")));
    fs::rename(home.at("dots/new"), home.at("dots/orvel.plist"));
    EXPECT_EQ(refreshedValue("b"), PreferenceValue(true)) << "as version control does it";
}

TEST_F(LinkedSettings, AnotherTargetIsSeen) {
    home.write("dots/work.plist", plistOf(flagged("work")));
    home.write("dots/play.plist", plistOf(flagged("play")));
    link(home.at("dots/work.plist"));
    open();
    relink(home.at("dots/play.plist"));
    ASSERT_TRUE(isWoken());
    EXPECT_EQ(refreshedValue("play"), PreferenceValue(true));
    home.write("dots/play.plist", plistOf(flagged("later")));
    EXPECT_EQ(refreshedValue("later"), PreferenceValue(true)) << "the new target is watched";
    home.write("dots/work.plist", plistOf(flagged("unused")));
    EXPECT_EQ(refreshedValue("later"), PreferenceValue(true)) << "the old one does not count";
}

TEST_F(LinkedSettings, AFileBecomesALinkAndBack) {
    home.write(kFile, plistOf(flagged("own")));
    home.write("dots/orvel.plist", plistOf(flagged("linked")));
    open();
    relink(home.at("dots/orvel.plist"));
    EXPECT_EQ(refreshedValue("linked"), PreferenceValue(true));
    fs::remove(home.at(kFile));
    EXPECT_EQ(refreshedValue("linked"), std::nullopt);
    home.write(kFile, plistOf(flagged("own")));
    EXPECT_EQ(refreshedValue("own"), PreferenceValue(true));
}

TEST_F(LinkedSettings, ALinkedFolderStaysOne) {
    home.write("dots/orvel/preferences.plist", plistOf(flagged("a")));
    link("../dots/orvel", ".config/orvel");
    open();
    set("b", true);
    ASSERT_TRUE(store->flush());
    EXPECT_TRUE(fs::is_symlink(home.at(".config/orvel")));
    EXPECT_THAT(home.read("dots/orvel/preferences.plist"), HasSubstr("<key>b</key>"));
    home.write("dots/orvel/preferences.plist", plistOf(flagged("c")));
    EXPECT_EQ(refreshedValue("c"), PreferenceValue(true));
    home.write("other/preferences.plist", plistOf(flagged("d")));
    relink("../other", ".config/orvel");
    EXPECT_EQ(refreshedValue("d"), PreferenceValue(true));
}

TEST_F(LinkedSettings, AMissingTargetIsNamedAndMadeByTheFirstWrite) {
    fs::create_directories(home.at("dots"));
    link(home.at("dots/orvel.plist"));
    open();
    EXPECT_THAT(lines(), ElementsAre(AllOf(HasSubstr(home.at("dots/orvel.plist")),
                                           HasSubstr("defaults apply"))));
    set("card_snap", true);
    ASSERT_TRUE(store->flush());
    EXPECT_TRUE(fs::is_symlink(home.at(kFile)));
    EXPECT_EQ(stored("card_snap"), PreferenceValue(true));
    EXPECT_EQ(home.mode("dots/orvel.plist"), 0600U);
}

TEST_F(LinkedSettings, AFolderThatIsNotMountedYetIsNotMade) {
    link(home.at("vault/orvel/preferences.plist"));
    open();
    set("card_snap", true);
    EXPECT_THAT(store->flush().error(), HasSubstr(home.at("vault/orvel/preferences.plist")));
    EXPECT_FALSE(home.has("vault"));
    fs::create_directories(home.at("vault/orvel"));
    ASSERT_TRUE(store->flush());
    EXPECT_EQ(stored("card_snap"), PreferenceValue(true));
}

TEST_F(LinkedSettings, ATargetThatAppearsIsSeen) {
    link(home.at("vault/orvel/preferences.plist"));
    open();
    home.write("vault/orvel/preferences.plist", plistOf(flagged("a")));
    EXPECT_EQ(refreshedValue("a"), PreferenceValue(true));
}

TEST_F(LinkedSettings, ACircleOfLinksIsAnErrorThatNamesThePath) {
    link(home.at("there"));
    link(home.at(kFile), "there");
    open();
    set("card_snap", true);
    EXPECT_THAT(store->flush().error(),
                AllOf(HasSubstr(home.path()), HasSubstr("too many symbolic links")));
    EXPECT_EQ(value("card_snap"), PreferenceValue(true));
}

TEST_F(LinkedSettings, ADamagedTargetIsKeptBesideItself) {
    home.write("dots/orvel.plist", "oops");
    link(home.at("dots/orvel.plist"));
    open();
    ASSERT_TRUE(store->flush());
    EXPECT_THAT(namesIn("dots"), ElementsAre("orvel.plist.damaged-1"));
    EXPECT_TRUE(fs::is_symlink(home.at(kFile)));
    set("card_snap", true);
    ASSERT_TRUE(store->flush());
    EXPECT_THAT(namesIn("dots"), UnorderedElementsAre("orvel.plist", "orvel.plist.damaged-1"));
}

TEST_F(LinkedSettings, AHandWrittenFileKeepsItsFormWhenOneSettingChanges) {
    const std::string mine =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<!-- managed in dotfiles; see README -->\n"
        "<plist version=\"1.0\">\n  <dict>\n    <!-- keyboard -->\n"
        "    <key>map_ctrl</key>   <string>Cmd</string>\n"
        "    <key>card_modifier</key> <true/>\n  </dict>\n</plist>\n";
    home.write("dots/orvel.plist", mine);
    link(home.at("dots/orvel.plist"));
    open();
    set("card_modifier", false);
    ASSERT_TRUE(store->flush());
    std::string wanted = mine;
    wanted.replace(wanted.find("<true/>"), 7, "<false/>");
    EXPECT_EQ(home.read("dots/orvel.plist"), wanted);
}

}  // namespace
}  // namespace orvel::test
