#include "platform/x11/application_index.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orvel::x11 {
namespace {

using testing::ElementsAre;

DesktopEntry entry(std::string id, std::string name, std::string executable) {
    DesktopEntry made;
    made.path = "/usr/share/applications/" + id;
    made.id = std::move(id);
    made.name = std::move(name);
    made.executable = std::move(executable);
    return made;
}

DesktopEntry hidden(DesktopEntry made) {
    made.isShown = false;
    return made;
}

ApplicationIndex desktop() {
    auto gimp = entry("gimp.desktop", "GNU Image Manipulation Program", "gimp-2.10");
    gimp.startupWmClass = "gimp-2.10";
    auto writer = entry("libreoffice-writer.desktop", "LibreOffice Writer", "libreoffice");
    writer.startupWmClass = "libreoffice-writer";
    auto calc = entry("libreoffice-calc.desktop", "LibreOffice Calc", "libreoffice");
    calc.startupWmClass = "libreoffice-calc";
    return ApplicationIndex({entry("org.xfce.mousepad.desktop", "Mousepad", "mousepad"), gimp,
                             writer, calc, entry("debian-xterm.desktop", "XTerm", "xterm"),
                             entry("org.gnome.Nautilus.desktop", "Files", "nautilus")});
}

std::string ownerOf(const WindowIdentity& window) {
    const auto index = desktop();
    const auto* found = index.owning(window);
    return found == nullptr ? "none" : found->id;
}

TEST(ApplicationIndex, FindsAnApplicationByIdWithAndWithoutItsEnding) {
    const auto index = desktop();
    ASSERT_NE(index.byId("gimp"), nullptr);
    EXPECT_EQ(index.byId("gimp"), index.byId("gimp.desktop"));
    EXPECT_EQ(index.byId("krita"), nullptr);
    EXPECT_EQ(index.byId(""), nullptr);
}

TEST(ApplicationIndex, FindsAnApplicationByItsFileAndByItsNameInTheApplicationsFolder) {
    const auto index = desktop();
    ASSERT_NE(index.byPath("/usr/share/applications/gimp.desktop"), nullptr);
    ASSERT_NE(index.byPath("/Applications/Mousepad.app"), nullptr);
    EXPECT_EQ(index.byPath("/Applications/Mousepad.app")->id, "org.xfce.mousepad.desktop");
    EXPECT_EQ(index.byPath("/Applications/.app"), nullptr);
    EXPECT_EQ(index.byPath("/opt/Mousepad.app"), nullptr);
}

TEST(ApplicationIndex, FindsAnApplicationByNameProgramOrLastPartOfItsId) {
    const auto index = desktop();
    EXPECT_EQ(index.byName("mousePAD")->id, "org.xfce.mousepad.desktop");
    EXPECT_EQ(index.byName("xterm")->id, "debian-xterm.desktop");
    EXPECT_EQ(index.byName("Nautilus")->id, "org.gnome.Nautilus.desktop");
}

TEST(ApplicationIndex, AWindowBelongsToTheApplicationThatDeclaresItsClass) {
    EXPECT_EQ(ownerOf({"", "libreoffice", "libreoffice-calc", "soffice.bin"}),
              "libreoffice-calc.desktop");
    EXPECT_EQ(ownerOf({"", "gimp-2.10", "Gimp-2.10", "gimp-2.10"}), "gimp.desktop");
}

TEST(ApplicationIndex, AWindowBelongsToTheApplicationWhoseIdEndsInItsClass) {
    EXPECT_EQ(ownerOf({"", "mousepad", "Mousepad", "mousepad"}), "org.xfce.mousepad.desktop");
}

TEST(ApplicationIndex, AWindowBelongsToTheApplicationThatItNames) {
    EXPECT_EQ(ownerOf({"org.gnome.Nautilus", "x", "X", "y"}), "org.gnome.Nautilus.desktop");
}

TEST(ApplicationIndex, AWindowBelongsToTheApplicationThatStartsItsProgram) {
    EXPECT_EQ(ownerOf({"", "my shell", "XTerm", "xterm"}), "debian-xterm.desktop");
    EXPECT_EQ(ownerOf({"", "nautilus", "", ""}), "org.gnome.Nautilus.desktop");
}

TEST(ApplicationIndex, AWindowOfNoInstalledApplicationHasNoOwner) {
    EXPECT_EQ(ownerOf({"", "tool", "Tool", "tool"}), "none");
    EXPECT_EQ(ownerOf({}), "none");
}

TEST(ApplicationIndex, AnApplicationThatPeopleSeeWinsOverAHiddenTwin) {
    const ApplicationIndex index({hidden(entry("pcmanfm-desktop-pref.desktop", "Files", "pcmanfm")),
                                  entry("pcmanfm.desktop", "Files", "pcmanfm")});
    EXPECT_EQ(index.byName("files")->id, "pcmanfm.desktop");
    EXPECT_EQ(index.owning({"", "", "", "pcmanfm"})->id, "pcmanfm.desktop");
}

TEST(ApplicationIndex, TheApplicationsFolderHoldsEachShownNameOnce) {
    const ApplicationIndex index({entry("b.desktop", "Zed", "zed"),
                                  entry("a.desktop", "Alpha", "a"),
                                  entry("c.desktop", "Alpha", "c"), entry("d.desktop", "a/b", "d"),
                                  hidden(entry("e.desktop", "Hidden", "e"))});
    EXPECT_THAT(index.folderNames(), ElementsAre("Alpha.app", "Zed.app"));
}

}  // namespace
}  // namespace orvel::x11
