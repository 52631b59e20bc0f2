#include "platform/x11/x11_login_items.hpp"
#include "tests/support/scratch_home.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace orvel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr std::string_view kEntry = ".config/autostart/orvel.desktop";

class LoginItemsOnDisk : public ::testing::Test {
protected:
    LoginItemsOnDisk() { home.set("XDG_CONFIG_DIRS", home.at("xdg")); }

    ScratchHome home;
    x11::X11LoginItems items{"/bin/sh"};
};

TEST_F(LoginItemsOnDisk, AnEntryStartsTheProgram) {
    ASSERT_TRUE(items.registerProgram());
    EXPECT_THAT(home.read(kEntry), HasSubstr("[Desktop Entry]\nType=Application\n"));
    EXPECT_THAT(home.read(kEntry), HasSubstr("\nExec=\"/bin/sh\" run\nTryExec=/bin/sh\n"));
    EXPECT_EQ(home.mode(kEntry), 0644U);
    ASSERT_TRUE(items.unregisterProgram());
    EXPECT_FALSE(home.has(kEntry));
    EXPECT_TRUE(fs::is_empty(home.at(".config/autostart")));
}

TEST_F(LoginItemsOnDisk, EverySignOfThePathStaysASign) {
    x11::X11LoginItems odd("/opt/a \"b\" $c `d` 50% e\\f/orvel");
    ASSERT_TRUE(odd.registerProgram());
    EXPECT_THAT(
        home.read(kEntry),
        HasSubstr(
            "\nExec=\"/opt/a \\\\\"b\\\\\" \\\\$c \\\\`d\\\\` 50%% e\\\\\\\\f/orvel\" run\n"));
    EXPECT_THAT(home.read(kEntry), HasSubstr("\nTryExec=/opt/a \"b\" $c `d` 50% e\\\\f/orvel\n"));
}

TEST_F(LoginItemsOnDisk, AnEntryOfTheUsersOwnMakingIsKept) {
    const std::string mine =
        "# mine\n[Desktop Entry]\nType=Application\nName=Orvel\nExec = orvel run --trace\n";
    home.write(kEntry, mine);
    ASSERT_TRUE(items.registerProgram());
    EXPECT_EQ(home.read(kEntry), mine);
}

TEST_F(LoginItemsOnDisk, AnEntryThatStartsNothingIsReplaced) {
    for (const char* rest :
         {"Exec=orvel\nHidden=true\n", "Exec=orvel\nX-GNOME-Autostart-enabled=false\n",
          "Exec=orvel\nTryExec=/gone/orvel\n", "[Other]\nExec=orvel\n", ""}) {
        home.write(kEntry, "[Desktop Entry]\nType=Application\nName=Orvel\n" + std::string(rest));
        ASSERT_TRUE(items.registerProgram());
        EXPECT_THAT(home.read(kEntry), HasSubstr("Exec=\"/bin/sh\" run")) << rest;
    }
}

TEST_F(LoginItemsOnDisk, WhatTheSystemStartsForEverybodyIsHidden) {
    home.write("xdg/autostart/orvel.desktop", "[Desktop Entry]\nExec=orvel run\n");
    ASSERT_TRUE(items.unregisterProgram());
    EXPECT_THAT(home.read(kEntry), HasSubstr("\nHidden=true\n"));
    ASSERT_TRUE(items.registerProgram());
    EXPECT_THAT(home.read(kEntry), Not(HasSubstr("Hidden")));
}

TEST_F(LoginItemsOnDisk, ALinkedEntryIsWrittenThroughAndOnlyTheLinkIsRemoved) {
    home.write("dots/orvel.desktop", "");
    fs::create_directories(home.at(".config/autostart"));
    fs::create_symlink(home.at("dots/orvel.desktop"), home.at(kEntry));
    ASSERT_TRUE(items.registerProgram());
    EXPECT_TRUE(fs::is_symlink(home.at(kEntry)));
    EXPECT_THAT(home.read("dots/orvel.desktop"), HasSubstr("Exec="));
    ASSERT_TRUE(items.unregisterProgram());
    EXPECT_FALSE(home.has(kEntry));
    EXPECT_TRUE(home.has("dots/orvel.desktop"));
}

}  // namespace
}  // namespace orvel::test
