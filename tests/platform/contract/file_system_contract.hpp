#pragma once

#include "platform/file_system.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace orvel::contract {

/// What every file system does. `Harness`:
///     FileSystem& files();
///     std::string folder();             an empty folder that may be written
///     std::string unwritableFolder();   a folder where writing fails
template <typename Harness>
class FileSystemContract : public ::testing::Test {
protected:
    Harness harness;
    FileSystem& files = harness.files();

    [[nodiscard]] std::string path(const std::string& name) {
        return harness.folder() + "/" + name;
    }
    Result<> write(const std::string& file, const std::string& text) {
        return files.writeAtomically(file, std::as_bytes(std::span(text)));
    }
    [[nodiscard]] std::string text(const std::string& file) {
        const auto bytes = files.read(file);
        if (!bytes) return "(" + bytes.error() + ")";
        return {reinterpret_cast<const char*>(bytes.value().data()), bytes.value().size()};
    }
};

TYPED_TEST_SUITE_P(FileSystemContract);

TYPED_TEST_P(FileSystemContract, ReadsBackWhatWasWritten) {
    ASSERT_TRUE(this->write(this->path("a.txt"), "some text").ok());
    EXPECT_TRUE(this->files.exists(this->path("a.txt")));
    EXPECT_EQ(this->text(this->path("a.txt")), "some text");
    ASSERT_TRUE(this->write(this->path("a.txt"), "").ok());
    EXPECT_EQ(this->text(this->path("a.txt")), "");
}

TYPED_TEST_P(FileSystemContract, TakesNamesOfAnyKind) {
    const std::string odd = this->path("-n '新建' $(x) \".txt");
    ASSERT_TRUE(this->write(odd, "x").ok());
    EXPECT_EQ(this->text(odd), "x");
}

TYPED_TEST_P(FileSystemContract, FailsOnWhatIsNotThere) {
    const std::string absent = this->path("absent");
    EXPECT_FALSE(this->files.exists(absent));
    EXPECT_FALSE(this->files.read(absent).ok());
    EXPECT_FALSE(this->files.readPropertyList(absent).ok());
    EXPECT_FALSE(this->files.list(absent).ok());
    EXPECT_FALSE(this->files.remove(absent).ok());
    EXPECT_FALSE(this->write(absent + "/below.txt", "x").ok());
}

TYPED_TEST_P(FileSystemContract, RemovesFiles) {
    ASSERT_TRUE(this->write(this->path("a.txt"), "x").ok());
    ASSERT_TRUE(this->files.remove(this->path("a.txt")).ok());
    EXPECT_FALSE(this->files.exists(this->path("a.txt")));
}

TYPED_TEST_P(FileSystemContract, RemovesFoldersWithWhatIsInThem) {
    ASSERT_TRUE(this->files.createFolder(this->path("one/two")).ok());
    ASSERT_TRUE(this->write(this->path("one/two/a.txt"), "x").ok());
    ASSERT_TRUE(this->files.remove(this->path("one")).ok());
    EXPECT_FALSE(this->files.exists(this->path("one/two/a.txt")));
    EXPECT_FALSE(this->files.exists(this->path("one")));
}

TYPED_TEST_P(FileSystemContract, LeavesNothingBesideAReplacedFile) {
    ASSERT_TRUE(this->write(this->path("a.txt"), "a longer text").ok());
    ASSERT_TRUE(this->write(this->path("a.txt"), "short").ok());
    EXPECT_EQ(this->text(this->path("a.txt")), "short");
    EXPECT_THAT(this->files.list(this->harness.folder()).value(), ::testing::ElementsAre("a.txt"));
}

TYPED_TEST_P(FileSystemContract, CreatesFoldersWithThoseAbove) {
    const std::string deep = this->path("one/two");
    ASSERT_TRUE(this->files.createFolder(deep).ok());
    EXPECT_TRUE(this->files.exists(this->path("one")));
    ASSERT_TRUE(this->write(deep + "/a.txt", "x").ok());
    EXPECT_TRUE(this->files.createFolder(deep).ok()) << "it is there already";
    EXPECT_EQ(this->text(deep + "/a.txt"), "x");
}

TYPED_TEST_P(FileSystemContract, ListsTheEntriesOfOneFolder) {
    ASSERT_TRUE(this->files.createFolder(this->path("folder")).ok());
    ASSERT_TRUE(this->write(this->path("folder/below.txt"), "x").ok());
    ASSERT_TRUE(this->write(this->path("a.txt"), "x").ok());
    const auto names = this->files.list(this->harness.folder());
    ASSERT_TRUE(names.ok());
    EXPECT_THAT(names.value(), ::testing::UnorderedElementsAre("folder", "a.txt"));
}

TYPED_TEST_P(FileSystemContract, RefusesToWriteWhereItMayNot) {
    const std::string folder = this->harness.unwritableFolder();
    EXPECT_FALSE(this->write(folder + "/a.txt", "x").ok());
    EXPECT_FALSE(this->files.exists(folder + "/a.txt"));
    EXPECT_FALSE(this->files.createFolder(folder + "/below").ok());
}

TYPED_TEST_P(FileSystemContract, KnowsWhereTheUserKeepsThings) {
    EXPECT_TRUE(this->files.homeDirectory().starts_with('/'));
    EXPECT_TRUE(this->files.cachesDirectory().starts_with('/'));
}

REGISTER_TYPED_TEST_SUITE_P(FileSystemContract, ReadsBackWhatWasWritten, TakesNamesOfAnyKind,
                            FailsOnWhatIsNotThere, RemovesFiles, RemovesFoldersWithWhatIsInThem,
                            LeavesNothingBesideAReplacedFile, CreatesFoldersWithThoseAbove,
                            ListsTheEntriesOfOneFolder, RefusesToWriteWhereItMayNot,
                            KnowsWhereTheUserKeepsThings);

}  // namespace orvel::contract
