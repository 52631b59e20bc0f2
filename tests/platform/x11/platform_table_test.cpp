#include "platform/x11/platform_table.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

namespace orvel::x11 {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

PlatformTable parsed(std::string_view text) { return parsePlatformTable("p.conf", text); }

TEST(PlatformTable, ReadsEntriesOfTheirSections) {
    const auto table = parsed(
        "# mine\n"
        "[keys]\n"
        "fn = Menu\n"
        "\n"
        "[applications]\r\n"
        "  com.apple.finder=thunar.desktop  \r\n");
    EXPECT_THAT(table.errors, IsEmpty());
    ASSERT_EQ(table.section("applications").size(), 1U);
    const auto entry = table.section("applications").front();
    EXPECT_EQ(entry.key, "com.apple.finder");
    EXPECT_EQ(entry.value, "thunar.desktop");
    EXPECT_EQ(entry.line, 6);
    EXPECT_EQ(table.section("keys").front().value, "Menu");
}

TEST(PlatformTable, AValueMayHoldAnEqualsSign) {
    EXPECT_EQ(parsed("[shortcuts]\neditor Command+Z = Control+=").section("shortcuts")[0].value,
              "Control+=");
}

TEST(PlatformTable, NamesFileAndLineOfWhatIsWrong) {
    const auto table = parsed("fn = Menu\n[keys]\nfn\n= x\nfn =\n[nonsense]\na = b\n[keys\n");
    EXPECT_THAT(table.errors,
                ElementsAre("p.conf:1: an entry before the first section",
                            "p.conf:3: expected 'key = value'",
                            "p.conf:4: no key before =", "p.conf:5: no value for 'fn'",
                            "p.conf:6: no section is called 'nonsense' (keys, applications, "
                            "shortcuts)",
                            "p.conf:8: a section ends with ]"));
    EXPECT_THAT(table.entries, IsEmpty());
}

TEST(PlatformTable, AKeySetTwiceKeepsItsFirstValue) {
    const auto table = parsed("[keys]\nfn = Menu\nfn = Pause\n");
    EXPECT_THAT(table.errors, ElementsAre("p.conf:3: 'fn' is already set in line 2"));
    EXPECT_EQ(table.section("keys").front().value, "Menu");
}

TEST(PlatformTable, LinesAroundAWrongOneHold) {
    EXPECT_EQ(parsed("[keys]\nnonsense\nfn = Menu").section("keys").size(), 1U);
}

TEST(PlatformTable, AnEmptyFileIsAnEmptyTable) {
    EXPECT_THAT(parsed("").entries, IsEmpty());
    EXPECT_THAT(parsed("").errors, IsEmpty());
}

class LoadPlatformTable : public testing::Test {
protected:
    LoadPlatformTable() {
        std::filesystem::create_directories(folder() / "orvel");
        ::setenv("XDG_CONFIG_HOME", folder().c_str(), 1);
    }
    ~LoadPlatformTable() override {
        std::filesystem::remove_all(folder());
        ::unsetenv("XDG_CONFIG_HOME");
    }
    static std::filesystem::path folder() {
        return std::filesystem::temp_directory_path() /
               ("orvel-table-" + std::to_string(::getpid()));
    }
    static std::filesystem::path file() { return folder() / "orvel" / "platform.conf"; }
};

TEST_F(LoadPlatformTable, WithoutAFileTheTableIsEmpty) {
    EXPECT_THAT(loadPlatformTable().entries, IsEmpty());
    EXPECT_THAT(loadPlatformTable().errors, IsEmpty());
}

TEST_F(LoadPlatformTable, ReadsTheFileOfTheConfigurationFolder) {
    std::ofstream(file()) << "[keys]\nfn = Menu\n";
    EXPECT_EQ(loadPlatformTable().section("keys").front().value, "Menu");
    std::ofstream(file()) << "";
    EXPECT_THAT(loadPlatformTable().errors, IsEmpty());
}

TEST_F(LoadPlatformTable, AFolderInItsPlaceIsAnErrorThatNamesIt) {
    std::filesystem::create_directory(file());
    std::ofstream(file() / "inside") << "x";
    EXPECT_THAT(loadPlatformTable().errors,
                ElementsAre(testing::StartsWith(file().string() + ": cannot be read")));
}

}  // namespace
}  // namespace orvel::x11
