#include "platform/x11/x11_file_system.hpp"
#include "tests/support/scratch_home.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <span>
#include <sys/stat.h>

namespace orvel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

class Files : public ::testing::Test {
protected:
    ScratchHome home;
    x11::X11FileSystem files;

    Result<> write(std::string_view name, std::string_view text) {
        return files.writeAtomically(home.at(name), std::as_bytes(std::span(text)));
    }
};

TEST_F(Files, TheCachesFolderFollowsTheEnvironment) {
    EXPECT_EQ(files.homeDirectory(), home.path());
    EXPECT_EQ(files.cachesDirectory(), home.at(".cache"));
    home.set("XDG_CACHE_HOME", home.at("quick/"));
    EXPECT_EQ(x11::X11FileSystem().cachesDirectory(), home.at("quick"));
    home.set("XDG_CACHE_HOME", "");
    EXPECT_EQ(x11::X11FileSystem().cachesDirectory(), home.at(".cache"));
}

TEST_F(Files, WhatIsMadeIsTheUsersAlone) {
    ASSERT_TRUE(files.createFolder(home.at("a/b")));
    ASSERT_TRUE(write("a/b/file", "x"));
    EXPECT_EQ(home.mode("a"), 0700U);
    EXPECT_EQ(home.mode("a/b"), 0700U);
    EXPECT_EQ(home.mode("a/b/file"), 0600U);
}

TEST_F(Files, AFileInTheWayOfAFolderIsAnError) {
    home.write("a", "x");
    EXPECT_THAT(files.createFolder(home.at("a")).error(), HasSubstr(home.at("a")));
    EXPECT_FALSE(files.createFolder(home.at("a/b")));
    EXPECT_EQ(home.read("a"), "x");
}

TEST_F(Files, WritingThroughALinkKeepsTheLink) {
    home.write("real/file", "x");
    fs::create_symlink(home.at("real/file"), home.at("link"));
    ASSERT_TRUE(write("link", "y"));
    EXPECT_TRUE(fs::is_symlink(home.at("link")));
    EXPECT_EQ(home.read("real/file"), "y");
}

TEST_F(Files, RemovingALinkLeavesWhatItLeadsTo) {
    home.write("real/file", "x");
    fs::create_symlink(home.at("real"), home.at("link"));
    ASSERT_TRUE(files.remove(home.at("link")));
    EXPECT_FALSE(home.has("link"));
    EXPECT_EQ(home.read("real/file"), "x");
}

TEST_F(Files, APipeIsNotWaitedFor) {
    ASSERT_EQ(mkfifo(home.at("pipe").c_str(), 0600), 0);
    EXPECT_THAT(files.read(home.at("pipe")).error(), HasSubstr("no regular file"));
    EXPECT_THAT(files.read(home.at("run")).error(), HasSubstr("folder"));
}

TEST_F(Files, APropertyListBecomesJson) {
    home.write("dock.plist",
               "<plist version=\"1.0\"><dict><key>apps</key><array><dict><key>id</key>"
               "<string>com.apple.finder</string></dict></array><key>n</key><integer>3</integer>"
               "<key>bytes</key><data>AAE=</data><key>on</key><true/></dict></plist>");
    const Result<Json> list = files.readPropertyList(home.at("dock.plist"));
    ASSERT_TRUE(list) << list.error();
    JsonWriter writer;
    EXPECT_EQ(writer.value(list.value()).text(),
              R"({"apps":[{"id":"com.apple.finder"}],"n":3,"bytes":"AAE=","on":true})");
}

TEST_F(Files, AFileThatIsNoPropertyListIsNamed) {
    home.write("dock.plist", "oops");
    EXPECT_THAT(files.readPropertyList(home.at("dock.plist")).error(),
                HasSubstr(home.at("dock.plist")));
}

TEST_F(Files, AFailedWriteLeavesTheOldFile) {
    home.write("folder/inside", "x");
    EXPECT_THAT(write("folder", "y").error(), HasSubstr(home.at("folder")));
    EXPECT_EQ(home.read("folder/inside"), "x");
    EXPECT_THAT(files.list(home.at("folder")).value(), ElementsAre("inside"));
}

}  // namespace
}  // namespace orvel::test
