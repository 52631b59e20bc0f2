#include "tests/platform/x11_files/store_fixture.hpp"
#include "tests/platform/x11_files/unprivileged.hpp"

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

using DamagedSettings = StoreFixture;

std::string damagedName(int n) {
    return ".config/orvel/preferences.plist.damaged-" + std::to_string(n);
}

TEST_F(DamagedSettings, AreKeptAsideAndDefaultsApply) {
    home.write(kFile, "<plist><dict><key>card_snap</key>");
    open();
    EXPECT_EQ(value("card_snap"), std::nullopt);
    ASSERT_TRUE(store->flush());
    EXPECT_EQ(home.read(damagedName(1)), "<plist><dict><key>card_snap</key>");
    EXPECT_FALSE(home.has(kFile));
    EXPECT_THAT(lines(), ElementsAre(AllOf(HasSubstr(home.at(kFile)),
                                           HasSubstr("preferences.plist.damaged-1"),
                                           HasSubstr("defaults apply"))));
}

TEST_F(DamagedSettings, AreNeverOverwrittenByAWrite) {
    open();
    home.write(kFile, "not settings");
    set("card_snap", true);
    ASSERT_TRUE(store->flush());
    EXPECT_EQ(home.read(damagedName(1)), "not settings");
    EXPECT_EQ(stored("card_snap"), PreferenceValue(true));
}

TEST_F(DamagedSettings, KeepTheirOrder) {
    for (int n = 1; n <= 3; ++n) {
        home.write(kFile, "damage " + std::to_string(n));
        open();
        ASSERT_TRUE(store->flush());
    }
    for (int n = 1; n <= 3; ++n)
        EXPECT_EQ(home.read(damagedName(n)), "damage " + std::to_string(n));
}

TEST_F(DamagedSettings, AreNoticedWhileRunning) {
    home.write(kFile, plistOf(flagged("card_snap")));
    open();
    home.write(kFile, "oops");
    store->refresh();
    EXPECT_EQ(value("card_snap"), std::nullopt);
    ASSERT_TRUE(store->flush());
    EXPECT_EQ(home.read(damagedName(1)), "oops");
}

TEST_F(DamagedSettings, AFileThatIsStillBeingWrittenIsWaitedFor) {
    home.write(kFile, plistOf(flagged("card_snap")));
    open();
    std::ofstream editor(home.at(kFile), std::ios::trunc);
    editor << "<plist><dict>" << std::flush;
    set("card_tab", true);
    store->refresh();
    EXPECT_EQ(value("card_snap"), PreferenceValue(true));
    editor << flagged("card_fn") << "</dict></plist>";
    editor.close();
    ASSERT_TRUE(store->flush());
    store->refresh();
    EXPECT_EQ(value("card_fn"), PreferenceValue(true));
    EXPECT_EQ(stored("card_fn"), PreferenceValue(true));
    EXPECT_EQ(stored("card_tab"), PreferenceValue(true));
    EXPECT_FALSE(home.has(damagedName(1)));
    EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(DamagedSettings, AFolderInTheirPlaceIsLeftAlone) {
    fs::create_directories(home.at(kFile) + "/inside");
    open();
    set("card_snap", true);
    EXPECT_THAT(store->flush().error(), HasSubstr("is a folder"));
    EXPECT_EQ(value("card_snap"), PreferenceValue(true));
    EXPECT_TRUE(home.has(std::string(kFile) + "/inside"));
    EXPECT_THAT(lines(), ElementsAre(HasSubstr("is a folder"), HasSubstr("is a folder")));
}

TEST_F(DamagedSettings, APipeInTheirPlaceBlocksNothing) {
    fs::create_directories(home.at(".config/orvel"));
    ASSERT_EQ(mkfifo(home.at(kFile).c_str(), 0600), 0);
    open();
    set("card_snap", true);
    EXPECT_THAT(store->flush().error(), HasSubstr("no regular file"));
    EXPECT_TRUE(fs::is_fifo(home.at(kFile)));
}

TEST_F(DamagedSettings, AHugeFileIsRefusedUnread) {
    home.write(kFile, "");
    fs::resize_file(home.at(kFile), std::uintmax_t{1} << 40);
    open();
    set("card_snap", true);
    EXPECT_THAT(store->flush().error(), HasSubstr("larger than"));
    EXPECT_EQ(fs::file_size(home.at(kFile)), std::uintmax_t{1} << 40);
}

TEST_F(DamagedSettings, AFileInPlaceOfTheFolderIsLeftAlone) {
    home.write(".config/orvel", "a note");
    open();
    set("card_snap", true);
    EXPECT_THAT(store->flush().error(), HasSubstr(home.at(".config/orvel")));
    EXPECT_EQ(home.read(".config/orvel"), "a note");
}

TEST_F(DamagedSettings, AnUnreadableFileIsReportedAndKept) {
    home.write(kFile, plistOf(flagged("card_snap")));
    fs::permissions(home.at(kFile), fs::perms::none);
    const Unprivileged user(home);
    open();
    set("card_tab", true);
    EXPECT_THAT(store->flush().error(), HasSubstr("Permission denied"));
    EXPECT_EQ(value("card_tab"), PreferenceValue(true));
    store.reset();
    EXPECT_EQ(lines().back(), "not stored: card_tab (" + home.at(kFile) + ": Permission denied)");
}

TEST_F(DamagedSettings, AFolderWithoutTheRightToWriteKeepsTheFileAndTheChangeInMemory) {
    home.write(kFile, plistOf(flagged("card_snap")));
    fs::permissions(home.at(".config/orvel"), fs::perms(0500));
    const Unprivileged user(home);
    open();
    set("card_snap", false);
    EXPECT_THAT(store->flush().error(), HasSubstr("Permission denied"));
    EXPECT_EQ(value("card_snap"), PreferenceValue(false));
    EXPECT_EQ(stored("card_snap"), PreferenceValue(true));
    fs::permissions(home.at(".config/orvel"), fs::perms(0700));
    ASSERT_TRUE(store->flush());
    EXPECT_EQ(stored("card_snap"), PreferenceValue(false));
    EXPECT_THAT(lines(), ElementsAre(HasSubstr("kept and tried again"), HasSubstr("stored again")));
}

TEST_F(DamagedSettings, ADamagedFileThatCannotBeRenamedStays) {
    home.write(kFile, "oops");
    fs::permissions(home.at(".config/orvel"), fs::perms(0500));
    const Unprivileged user(home);
    open();
    EXPECT_FALSE(store->flush());
    EXPECT_EQ(home.read(kFile), "oops");
    EXPECT_THAT(lines(),
                ElementsAre(AllOf(HasSubstr("no usable settings"), HasSubstr("stays as it is"))));
}

TEST_F(DamagedSettings, AFileThatItsOwnerMadeReadOnlyIsNotReplaced) {
    home.write(kFile, plistOf(flagged("card_snap")));
    fs::permissions(home.at(kFile), fs::perms(0400));
    open();
    set("card_snap", false);
    EXPECT_THAT(store->flush().error(), HasSubstr("read-only"));
    EXPECT_EQ(stored("card_snap"), PreferenceValue(true));
}

/// No file of this process may grow beyond a size, as on a disk that is full.
class FullDisk {
public:
    explicit FullDisk(rlim_t size) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit full{size, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &full);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }

private:
    rlimit before_{};
    void (*handler_)(int);
};

TEST_F(DamagedSettings, AFullDiskLeavesTheFileWholeAndTheChangeIsWrittenLater) {
    home.write(kFile, plistOf(flagged("card_snap")));
    open();
    {
        const FullDisk disk(16);
        set("card_snap", false);
        EXPECT_FALSE(store->flush());
    }
    EXPECT_EQ(stored("card_snap"), PreferenceValue(true));
    EXPECT_EQ(value("card_snap"), PreferenceValue(false));
    EXPECT_FALSE(home.has(".config/orvel/.preferences.plist.new"));
    EXPECT_TRUE(eventually([&] { return stored("card_snap"); }, PreferenceValue(false)))
        << "tried again without being asked";
}

TEST_F(DamagedSettings, AChangeThatFailedGivesWayToANewerOneOfAnotherProgram) {
    home.write(kFile, plistOf(flagged("a") + flagged("b")));
    open();
    {
        const FullDisk disk(16);
        set("a", "mine");
        set("b", "mine");
        EXPECT_FALSE(store->flush());
    }
    home.write(kFile, plistOf(flagged("a", false) + flagged("b")));
    ASSERT_TRUE(store->flush());
    store->refresh();
    EXPECT_EQ(value("a"), PreferenceValue(false));
    EXPECT_EQ(value("b"), PreferenceValue("mine"));
}

}  // namespace
}  // namespace orvel::test
