#pragma once

#include "platform/window_list.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace orvel::contract {

/// What every list of windows does. `Harness`:
///     WindowList& list();
///     ProcessId open(std::string title, AxRect frame);   a new window in front of all others
///     void minimise(ProcessId pid);
template <typename Harness>
class WindowListContract : public ::testing::Test {
protected:
    Harness harness;
    WindowList& list = harness.list();

    /// The windows of one process, front to back.
    [[nodiscard]] std::vector<WindowInfo> windowsOf(ProcessId pid, WindowListScope scope) {
        std::vector<WindowInfo> found = list.windows(scope);
        std::erase_if(found, [pid](const WindowInfo& window) { return window.pid != pid; });
        return found;
    }
    [[nodiscard]] std::size_t placeOf(ProcessId pid) {
        const auto all = list.windows(WindowListScope::onScreen);
        const auto found = std::find_if(all.begin(), all.end(),
                                        [pid](const auto& window) { return window.pid == pid; });
        return static_cast<std::size_t>(found - all.begin());
    }
};

TYPED_TEST_SUITE_P(WindowListContract);

TYPED_TEST_P(WindowListContract, TellsNameAndBoundsOfAWindow) {
    const ProcessId pid = this->harness.open("Notes", {100, 120, 320, 240});
    const auto found = this->windowsOf(pid, WindowListScope::onScreen);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_NE(found[0].number, 0U);
    EXPECT_EQ(found[0].layer, 0);
    EXPECT_EQ(found[0].name, "Notes");
    EXPECT_EQ(found[0].bounds, (AxRect{100, 120, 320, 240}));
}

TYPED_TEST_P(WindowListContract, ListsTheFrontWindowFirst) {
    const ProcessId back = this->harness.open("Back", {0, 0, 200, 200});
    const ProcessId front = this->harness.open("Front", {50, 50, 200, 200});
    EXPECT_LT(this->placeOf(front), this->placeOf(back));
}

TYPED_TEST_P(WindowListContract, KeepsMinimisedWindowsInTheFullListOnly) {
    const ProcessId pid = this->harness.open("Notes", {100, 120, 320, 240});
    this->harness.minimise(pid);
    EXPECT_TRUE(this->windowsOf(pid, WindowListScope::onScreen).empty());
    EXPECT_EQ(this->windowsOf(pid, WindowListScope::all).size(), 1U);
}

REGISTER_TYPED_TEST_SUITE_P(WindowListContract, TellsNameAndBoundsOfAWindow,
                            ListsTheFrontWindowFirst, KeepsMinimisedWindowsInTheFullListOnly);

}  // namespace orvel::contract
