#include "tests/platform/x11_files/store_fixture.hpp"

#include <cerrno>
#include <filesystem>
#include <sys/inotify.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

/// The kernel gives each user a limited number of both.
bool areInstancesTaken = false;
bool areWatchesTaken = false;

}  // namespace

// Stand before those of the C library.
extern "C" int inotify_init1(int flags) noexcept {
    if (!areInstancesTaken) return static_cast<int>(syscall(SYS_inotify_init1, flags));
    errno = EMFILE;
    return -1;
}

extern "C" int inotify_add_watch(int instance, const char* path, std::uint32_t mask) noexcept {
    if (!areWatchesTaken) {
        return static_cast<int>(syscall(SYS_inotify_add_watch, instance, path, mask));
    }
    errno = ENOSPC;
    return -1;
}

namespace orvel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

/// The settings while the kernel cannot tell of changes, for either reason.
class UnwatchedSettings : public StoreFixture, public ::testing::WithParamInterface<bool*> {
protected:
    UnwatchedSettings() { *GetParam() = true; }
    ~UnwatchedSettings() override { *GetParam() = false; }
};

INSTANTIATE_TEST_SUITE_P(For, UnwatchedSettings,
                         ::testing::Values(&areInstancesTaken, &areWatchesTaken),
                         [](const auto& taken) {
                             return taken.param == &areInstancesTaken ? "WantOfAnInstance"
                                                                      : "WantOfWatches";
                         });

TEST_P(UnwatchedSettings, TheUserIsToldOnceWhatToRaise) {
    open();
    for (const bool isOn : {true, false}) {
        home.write(kFile, plistOf(flagged("card_snap", isOn)));
        store->refresh();
    }
    EXPECT_THAT(lines(),
                ElementsAre(HasSubstr(GetParam() == &areInstancesTaken ? "max_user_instances"
                                                                       : "max_user_watches")));
}

TEST_P(UnwatchedSettings, AChangeIsThereBeforeTheNextInput) {
    open();
    expectThatAFileIsSeenToComeChangeAndGo();
    home.write("dotfiles/orvel.plist", plistOf(flagged("c")));
    fs::create_symlink(home.at("dotfiles/orvel.plist"), home.at(kFile));
    EXPECT_EQ(refreshedValue("c"), PreferenceValue(true)) << "linked";
    home.write("dotfiles/orvel.plist", plistOf(flagged("longer name")));
    EXPECT_EQ(refreshedValue("longer name"), PreferenceValue(true)) << "behind the link";
}

TEST_P(UnwatchedSettings, WithoutAnyInputAChangeIsFoundByTheClock) {
    open();
    home.write(kFile, plistOf(flagged("card_snap")));
    EXPECT_TRUE(eventually([this] { return isWoken(); }, true));
    EXPECT_EQ(refreshedValue("card_snap"), PreferenceValue(true));
}

TEST_P(UnwatchedSettings, NothingThatTwoProgramsWriteIsLost) {
    open();
    set("mine", true);
    ASSERT_TRUE(store->flush());
    x11::X11PreferenceStore other(x11::preferencesPath(), [](std::string_view) {});
    other.set(other.handle("theirs"), true);
    ASSERT_TRUE(other.flush());
    set("mine too", true);
    ASSERT_TRUE(store->flush());
    EXPECT_EQ(refreshedValue("theirs"), PreferenceValue(true));
    EXPECT_EQ(stored("mine"), PreferenceValue(true));
    EXPECT_EQ(stored("mine too"), PreferenceValue(true));
    EXPECT_EQ(stored("theirs"), PreferenceValue(true));
}

}  // namespace
}  // namespace orvel::test
