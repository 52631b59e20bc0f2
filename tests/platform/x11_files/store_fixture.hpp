#pragma once

#include "platform/x11/x11_preference_store.hpp"
#include "tests/support/poll_until.hpp"
#include "tests/support/scratch_home.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <poll.h>
#include <string>
#include <string_view>
#include <vector>

namespace orvel::test {

/// A settings file in a home folder of its own, and a store over it as a session has one.
class StoreFixture : public ::testing::Test {
protected:
    static constexpr std::string_view kFile = ".config/orvel/preferences.plist";

    ScratchHome home;

    void open() {
        store.reset();
        store = std::make_unique<x11::X11PreferenceStore>(
            x11::preferencesPath(), [this](std::string_view line) { keep(line); });
        store->changesFd();
    }

    static std::string plistOf(std::string_view content) {
        return "<plist version=\"1.0\">\n<dict>" + std::string(content) + "</dict>\n</plist>\n";
    }
    static std::string flagged(std::string_view key, bool flag = true) {
        return "<key>" + std::string(key) + "</key>" + (flag ? "<true/>" : "<false/>");
    }

    std::optional<PreferenceValue> value(std::string_view key) {
        const PreferenceValue* stored = store->value(store->handle(key));
        return stored == nullptr ? std::nullopt : std::optional(*stored);
    }
    void set(std::string_view key, PreferenceValue value) {
        store->set(store->handle(key), std::move(value));
    }

    /// What a store made now would read from the disk.
    std::optional<PreferenceValue> stored(std::string_view key) {
        x11::X11PreferenceStore fresh(x11::preferencesPath(), [](std::string_view) {});
        const PreferenceValue* value = fresh.value(fresh.handle(key));
        return value == nullptr ? std::nullopt : std::optional(*value);
    }

    /// Whether the run loop would wake up at this moment.
    bool isWoken() {
        pollfd waiting{store->changesFd(), POLLIN, 0};
        return poll(&waiting, 1, 0) == 1;
    }

    /// The value as it is at the first wake-up that changes it.
    std::optional<PreferenceValue> refreshedValue(std::string_view key) {
        store->refresh();
        return value(key);
    }

    /// Makes the file with its folders, renames another one over it and deletes it.
    void expectThatAFileIsSeenToComeChangeAndGo() {
        home.write(kFile, plistOf(flagged("a")));
        EXPECT_EQ(refreshedValue("a"), PreferenceValue(true)) << "made with its folders";
        home.write(".config/orvel/other", plistOf(flagged("b")));
        std::filesystem::rename(home.at(".config/orvel/other"), home.at(kFile));
        EXPECT_EQ(refreshedValue("b"), PreferenceValue(true)) << "renamed over it";
        std::filesystem::remove(home.at(kFile));
        EXPECT_EQ(refreshedValue("b"), std::nullopt) << "deleted";
    }

    std::vector<std::string> lines() {
        const std::lock_guard lock(mutex_);
        return lines_;
    }

private:
    void keep(std::string_view line) {
        const std::lock_guard lock(mutex_);
        lines_.emplace_back(line);
    }

    std::mutex mutex_;
    std::vector<std::string> lines_;

protected:
    std::unique_ptr<x11::X11PreferenceStore> store;
};

}  // namespace orvel::test
