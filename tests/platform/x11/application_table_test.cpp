#include "platform/x11/application_table.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

namespace orvel::x11 {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

DesktopEntry entry(std::string id, std::vector<std::string> categories = {}) {
    DesktopEntry made;
    made.path = "/usr/share/applications/" + id;
    made.name = id.substr(0, id.rfind('.'));
    made.executable = lowered(made.name);
    made.id = std::move(id);
    made.categories = std::move(categories);
    return made;
}

ApplicationIndex desktop() {
    return ApplicationIndex({entry("debian-xterm.desktop"), entry("xfce4-terminal.desktop"),
                             entry("pcmanfm.desktop"), entry("thunar.desktop"),
                             entry("firefox-esr.desktop"), entry("chromium.desktop"),
                             entry("mousepad.desktop", {"Utility", "TextEditor"})});
}

std::string resolved(const ApplicationTable& table, std::string_view identifier,
                     std::string_view preferred = {}) {
    const auto index = desktop();
    const auto* found = table.resolve(index, identifier, preferred);
    return found == nullptr ? "none" : found->id;
}

ApplicationTable withUserTable(std::string_view text, std::vector<std::string>& errors) {
    return {parsePlatformTable("p.conf", text), errors};
}

TEST(ApplicationTable, TheBestInstalledCandidateStandsForAnApplicationOfMacos) {
    EXPECT_EQ(resolved({}, "com.apple.Terminal"), "xfce4-terminal.desktop");
    EXPECT_EQ(resolved({}, "com.apple.finder"), "thunar.desktop");
    EXPECT_EQ(resolved({}, "com.apple.DiskUtility"), "none");
}

TEST(ApplicationTable, ThePreferredOneIsTakenWhenItCanStandForIt) {
    EXPECT_EQ(resolved({}, "com.apple.finder", "pcmanfm.desktop"), "pcmanfm.desktop");
    EXPECT_EQ(resolved({}, "com.apple.finder", "mousepad.desktop"), "thunar.desktop");
}

TEST(ApplicationTable, TheUsersChoiceWinsByIdAndByName) {
    std::vector<std::string> errors;
    const auto table = withUserTable(
        "[applications]\ncom.apple.Terminal = debian-xterm\nMission Control = mousepad.desktop\n",
        errors);
    EXPECT_THAT(errors, IsEmpty());
    EXPECT_EQ(resolved(table, "com.apple.Terminal"), "debian-xterm.desktop");
    const auto index = desktop();
    ASSERT_NE(table.resolveName(index, "Mission Control"), nullptr);
    EXPECT_EQ(table.resolveName(index, "Mission Control")->id, "mousepad.desktop");
}

TEST(ApplicationTable, AChoiceThatIsNotInstalledFallsBackToTheCandidates) {
    std::vector<std::string> errors;
    const auto table = withUserTable("[applications]\ncom.apple.Terminal = gone\n", errors);
    EXPECT_EQ(resolved(table, "com.apple.Terminal"), "xfce4-terminal.desktop");
}

TEST(ApplicationTable, AnUnknownApplicationOfMacosIsAnErrorWithItsLine) {
    std::vector<std::string> errors;
    withUserTable("[applications]\ncom.apple.Nonsense = xterm\n", errors);
    EXPECT_THAT(errors, ElementsAre("p.conf:2: no application of macOS that is used here is called "
                                    "'com.apple.Nonsense'"));
}

TEST(ApplicationTable, AnIdOfADesktopFileResolvesToItself) {
    EXPECT_EQ(resolved({}, "mousepad.desktop"), "mousepad.desktop");
    EXPECT_EQ(resolved({}, "none.desktop"), "none");
}

TEST(ApplicationTable, NamesOfMacosAndOfTheDesktopResolve) {
    const auto index = desktop();
    const ApplicationTable table;
    EXPECT_EQ(table.resolveName(index, "Terminal")->id, "xfce4-terminal.desktop");
    EXPECT_EQ(table.resolveName(index, "mousepad")->id, "mousepad.desktop");
    EXPECT_EQ(table.resolveName(index, "Launchpad"), nullptr);
}

TEST(ApplicationTable, EveryFileManagerAndBrowserPlaysItsPart) {
    const ApplicationTable table;
    EXPECT_EQ(table.macIdentifier(entry("pcmanfm.desktop")), "com.apple.finder");
    EXPECT_EQ(table.macIdentifier(entry("thunar.desktop")), "com.apple.finder");
    EXPECT_EQ(table.macIdentifier(entry("new-files.desktop", {"FileManager"})), "com.apple.finder");
    EXPECT_EQ(table.macIdentifier(entry("chromium.desktop")), "com.google.Chrome");
    EXPECT_EQ(table.macIdentifier(entry("firefox-esr.desktop")), "org.mozilla.firefox");
    EXPECT_EQ(table.macIdentifier(entry("new-web.desktop", {"WebBrowser"})), "com.apple.Safari");
    EXPECT_EQ(table.macIdentifier(entry("mousepad.desktop", {"TextEditor"})), std::nullopt);
}

TEST(ApplicationTable, NoIdentifierOrNameStandsTwice) {
    std::set<std::string_view> seen;
    for (const auto& counterpart : ApplicationTable::counterparts()) {
        EXPECT_TRUE(seen.insert(counterpart.identifier).second) << counterpart.identifier;
        EXPECT_TRUE(seen.insert(counterpart.name).second) << counterpart.name;
        EXPECT_FALSE(counterpart.candidates.empty()) << counterpart.name;
    }
}

TEST(ApplicationKind, FollowsIdAndCategories) {
    EXPECT_EQ(kindOf(entry("pcmanfm.desktop")), ApplicationKind::fileManager);
    EXPECT_EQ(kindOf(entry("x.desktop", {"TerminalEmulator"})), ApplicationKind::terminal);
    EXPECT_EQ(kindOf(entry("x.desktop", {"WebBrowser"})), ApplicationKind::browser);
    EXPECT_EQ(kindOf(entry("x.desktop", {"TextEditor"})), ApplicationKind::editor);
    EXPECT_EQ(kindOf(entry("x.desktop", {"Game"})), ApplicationKind::other);
}

TEST(ApplicationKind, OfAWindowWithoutADesktopFileFollowsItsProgram) {
    EXPECT_EQ(kindOf(WindowIdentity{"", "work", "XTerm", "xterm"}), ApplicationKind::terminal);
    EXPECT_EQ(kindOf(WindowIdentity{"", "", "", "tool"}), ApplicationKind::other);
}

TEST(ApplicationKind, NamesReadBack) {
    for (const auto kind :
         {ApplicationKind::fileManager, ApplicationKind::terminal, ApplicationKind::browser,
          ApplicationKind::editor, ApplicationKind::other})
        EXPECT_EQ(kindNamed(kindName(kind)), kind);
    EXPECT_EQ(kindNamed("finder"), std::nullopt);
}

}  // namespace
}  // namespace orvel::x11
