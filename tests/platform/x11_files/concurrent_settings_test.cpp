#include "platform/x11/settings_lock.hpp"
#include "tests/platform/x11_files/process.hpp"
#include "tests/platform/x11_files/store_fixture.hpp"

#include <filesystem>
#include <random>

namespace orvel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Le;

using ConcurrentSettings = StoreFixture;

TEST_F(ConcurrentSettings, ProcessesThatWriteAtOnceLoseNothing) {
    constexpr int kProcesses = 4;
    constexpr int kKeys = 15;
    std::vector<std::unique_ptr<Process>> processes;
    for (int p = 0; p < kProcesses; ++p) {
        processes.push_back(std::make_unique<Process>([&, p](int) {
            x11::X11PreferenceStore mine(x11::preferencesPath(), [](std::string_view) {});
            for (int k = 0; k < kKeys; ++k) {
                mine.set(mine.handle("key_" + std::to_string(p) + "_" + std::to_string(k)),
                         std::int64_t{k});
                if (!mine.flush()) _exit(1);
            }
        }));
    }
    for (const auto& process : processes) EXPECT_EQ(process->wait(), 0);
    open();
    for (int p = 0; p < kProcesses; ++p) {
        for (int k = 0; k < kKeys; ++k) {
            const std::string key = "key_" + std::to_string(p) + "_" + std::to_string(k);
            EXPECT_EQ(value(key), PreferenceValue(std::int64_t{k})) << key;
        }
    }
    EXPECT_FALSE(home.has(std::string(kFile) + ".lock"));
}

TEST_F(ConcurrentSettings, ARunningStoreAndAnotherProcessShareTheFile) {
    open();
    Process other([&](int) {
        x11::X11PreferenceStore theirs(x11::preferencesPath(), [](std::string_view) {});
        for (int i = 1; i <= 30; ++i) {
            theirs.set(theirs.handle("theirs"), std::int64_t{i});
            if (!theirs.flush()) _exit(1);
        }
    });
    for (int i = 1; i <= 30; ++i) {
        set("mine", std::int64_t{i});
        store->refresh();
        ASSERT_EQ(value("mine"), PreferenceValue(std::int64_t{i}));
        ASSERT_TRUE(store->flush());
    }
    EXPECT_EQ(other.wait(), 0);
    EXPECT_EQ(refreshedValue("theirs"), PreferenceValue(std::int64_t{30}));
    EXPECT_EQ(stored("mine"), PreferenceValue(std::int64_t{30}));
    EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(ConcurrentSettings, AWriterKilledAtAnyMomentLeavesAWholeFileWithEverythingItFinished) {
    std::mt19937 random(20240601);
    for (int round = 0; round < 20; ++round) {
        Process writer([&](int pipe) {
            x11::X11PreferenceStore theirs(x11::preferencesPath(), [](std::string_view) {});
            const PreferenceHandle counter = theirs.handle("counter");
            theirs.set(theirs.handle("bulk"), PreferenceData(100'000, std::byte{1}));
            for (int i = 1;; ++i) {
                theirs.set(counter, std::int64_t{i});
                if (!theirs.flush()) _exit(1);
                tell(pipe, i);
            }
        });
        int finished = writer.next().value_or(0);
        ASSERT_EQ(finished, 1);
        poll(nullptr, 0, std::uniform_int_distribution<int>(0, 15)(random));
        writer.end(SIGKILL);
        while (const auto number = writer.next()) finished = *number;

        open();
        EXPECT_EQ(value("bulk"), PreferenceValue(PreferenceData(100'000, std::byte{1})));
        ASSERT_TRUE(value("counter"));
        EXPECT_THAT(std::int64_t{finished}, Le(std::get<std::int64_t>(*value("counter"))));
        set("after", std::int64_t{round});
        ASSERT_TRUE(store->flush());
        store.reset();
    }
    EXPECT_THAT(lines(), IsEmpty());
    EXPECT_FALSE(home.has(".config/orvel/.preferences.plist.new"));
}

TEST_F(ConcurrentSettings, AWriterThatNeverEndsIsNotWaitedForForever) {
    home.write(kFile, plistOf(flagged("a")));
    Process other([&](int pipe) {
        const Result<x11::SettingsLock> lock = x11::SettingsLock::acquire(home.at(kFile) + ".lock");
        tell(pipe, lock ? 1 : 0);
        pause();
    });
    ASSERT_EQ(other.next(), 1);
    open();
    set("a", false);
    EXPECT_THAT(store->flush().error(), HasSubstr("another program holds preferences.plist.lock"));
    EXPECT_EQ(value("a"), PreferenceValue(false));
    other.end(SIGKILL);
    ASSERT_TRUE(store->flush());
    EXPECT_EQ(stored("a"), PreferenceValue(false));
}

}  // namespace
}  // namespace orvel::test
