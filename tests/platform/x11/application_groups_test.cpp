#include "platform/x11/application_groups.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <unistd.h>

namespace orvel::x11 {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

DesktopEntry entry(std::string id, std::string wmClass) {
    DesktopEntry made;
    made.path = "/usr/share/applications/" + id;
    made.name = id.substr(0, id.rfind('.'));
    made.id = std::move(id);
    made.startupWmClass = std::move(wmClass);
    return made;
}

ClientWindow window(std::uint32_t id, ProcessId process, std::string className,
                    std::string program = {}) {
    ClientWindow made;
    made.id = id;
    made.process = process;
    made.identity.className = std::move(className);
    made.identity.executable = std::move(program);
    return made;
}

const ApplicationIndex kOffice({entry("writer.desktop", "Writer"), entry("calc.desktop", "Calc"),
                                entry("thunar.desktop", "Thunar")});

std::vector<ApplicationGroup> grouped(const std::vector<ClientWindow>& windows) {
    return groupWindows(windows, kOffice, ApplicationTable());
}

TEST(GroupWindows, WindowsOfOneApplicationBelongTogetherWhateverTheirProcess) {
    const auto groups = grouped({window(1, 10, "Writer"), window(2, 11, "Writer")});
    ASSERT_THAT(groups, SizeIs(1));
    EXPECT_EQ(groups[0].handle, 10);
    EXPECT_THAT(groups[0].windows, ElementsAre(1, 2));
    EXPECT_EQ(groups[0].bundleId, "writer.desktop");
}

TEST(GroupWindows, TwoApplicationsOfOneProcessHaveHandlesOfTheirOwn) {
    const auto groups = grouped({window(1, 10, "Writer"), window(2, 10, "Calc")});
    ASSERT_THAT(groups, SizeIs(2));
    EXPECT_EQ(groups[0].handle, 10);
    EXPECT_LT(groups[1].handle, 0);
    EXPECT_EQ(groups[1].process, 10);
}

TEST(GroupWindows, WithoutADesktopFileWindowsOfOneClassAreTheApplication) {
    const auto groups = grouped({window(1, 10, "Tool", "python-tool"),
                                 window(2, 11, "Tool", "python-tool"), window(3, 12, "X")});
    ASSERT_THAT(groups, SizeIs(2));
    EXPECT_EQ(groups[0].bundleId, "tool");
    EXPECT_EQ(groups[0].name, "Tool");
    EXPECT_TRUE(groups[0].path.empty());
}

TEST(GroupWindows, WithoutAClassWindowsOfOneProgramAreTheApplication) {
    const auto groups = grouped({window(1, 10, "", "tool"), window(2, 11, "", "tool")});
    ASSERT_THAT(groups, SizeIs(1));
    EXPECT_EQ(groups[0].bundleId, "tool");
}

TEST(GroupWindows, AWindowThatTellsNothingIsAnApplicationOfItsOwn) {
    const auto groups = grouped({window(1, 0, ""), window(2, 0, "")});
    ASSERT_THAT(groups, SizeIs(2));
    EXPECT_NE(groups[0].handle, groups[1].handle);
    EXPECT_LT(groups[0].handle, 0);
}

TEST(GroupWindows, TheCounterpartOfFinderIsKnownByBothNames) {
    const auto groups = grouped({window(1, 10, "Thunar")});
    EXPECT_EQ(groups[0].bundleId, "thunar.desktop");
    EXPECT_EQ(groups[0].frontmostId, "com.apple.finder");
    EXPECT_EQ(groups[0].kind, ApplicationKind::fileManager);
}

TEST(GroupWindows, ApplicationsThatPeopleDoNotSeeAreNotRegular) {
    auto dock = window(1, 10, "Panel");
    dock.kind = WindowKind::dock;
    auto skipped = window(2, 11, "Tray");
    skipped.skipsTaskbar = true;
    const auto groups = grouped({dock, skipped, window(3, 12, "Writer")});
    EXPECT_FALSE(groups[0].isRegular);
    EXPECT_FALSE(groups[1].isRegular);
    EXPECT_TRUE(groups[2].isRegular);
}

TEST(GroupWindows, AFileManagersDesktopAndItsWindowAreOneApplication) {
    auto desktop = window(1, 10, "Thunar");
    desktop.kind = WindowKind::desktop;
    const auto groups = grouped({desktop, window(2, 10, "Thunar")});
    ASSERT_THAT(groups, SizeIs(1));
    EXPECT_TRUE(groups[0].isRegular);
}

TEST(ProgramName, NamesTheProgramOfAProcess) {
    EXPECT_EQ(programName(::getpid()), "x11_services_test");
    EXPECT_TRUE(programPath(::getpid()).ends_with("/x11_services_test"));
    EXPECT_EQ(programName(0), "");
    EXPECT_EQ(programName(-5), "");
}

}  // namespace
}  // namespace orvel::x11
