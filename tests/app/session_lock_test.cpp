#include "app/session/session_lock.hpp"

#include "tests/platform/x11_files/process.hpp"
#include "tests/platform/x11_files/unprivileged.hpp"
#include "tests/support/scratch_home.hpp"

#include <gtest/gtest.h>

#include <csignal>
#include <cstring>
#include <filesystem>
#include <optional>

namespace orvel::session {
namespace {

using test::Process;

constexpr const char* kDisplay = ":7";

class SessionLockTest : public ::testing::Test {
protected:
    test::ScratchFolder folder;
    LockRefusal refusal;

    std::optional<SessionLock> take(const std::string& display = kDisplay) {
        return SessionLock::take(folder.path(), display, refusal);
    }
    /// Another process that takes the lock, tells whether it has it, and keeps it.
    Process holder() {
        return Process([this](int pipe) {
            const auto lock = take();
            test::tell(pipe, lock.has_value() ? 1 : 0);
            while (true) ::pause();
        });
    }
};

TEST_F(SessionLockTest, OnlyOneProcessHasItAndTheOtherLearnsWhichOne) {
    Process other = holder();
    ASSERT_EQ(other.next(), 1);
    EXPECT_FALSE(take().has_value());
    EXPECT_EQ(refusal.holder, other.id());
    EXPECT_EQ(refusal.problem, "");
}

TEST_F(SessionLockTest, IsFreeAgainAfterItsProcessWasKilled) {
    Process other = holder();
    ASSERT_EQ(other.next(), 1);
    other.end(SIGKILL);
    EXPECT_TRUE(folder.has(lockFileName(kDisplay))) << "what the dead leave behind";
    EXPECT_TRUE(take().has_value());
}

TEST_F(SessionLockTest, IsFreeAgainOnceItIsLetGo) {
    EXPECT_TRUE(take().has_value());
    EXPECT_TRUE(take().has_value());
}

TEST_F(SessionLockTest, EachDisplayHasItsOwnAndAScreenIsNoDisplay) {
    const auto lock = take();
    EXPECT_TRUE(take(":8").has_value());
    EXPECT_FALSE(take(":7.1").has_value());
    EXPECT_EQ(refusal.holder, ::getpid());
}

TEST_F(SessionLockTest, TellsWhyAFolderTakesNoLock) {
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0500));
    {
        const test::Unprivileged user(folder);
        EXPECT_FALSE(take().has_value());
    }
    EXPECT_EQ(refusal.holder, 0);
    EXPECT_EQ(refusal.problem, std::strerror(EACCES));
}

TEST_F(SessionLockTest, FollowsNoLinkThatSomebodyPutThere) {
    folder.write("precious", "text");
    std::filesystem::create_symlink(folder.at("precious"), folder.at(lockFileName(kDisplay)));
    EXPECT_FALSE(take().has_value());
    EXPECT_EQ(refusal.problem, std::strerror(ELOOP));
    EXPECT_EQ(folder.read("precious"), "text");
}

}  // namespace
}  // namespace orvel::session
