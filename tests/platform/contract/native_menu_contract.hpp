#pragma once

#include "platform/native_menu.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <string_view>

namespace orvel::contract {

/// What every native menu does. `Harness`:
///     NativeMenus& menus();
///     void choose(std::string_view title);   a person picks that item of the open menu
///     void dismiss();                        … or closes it without picking one
template <typename Harness>
class NativeMenuContract : public ::testing::Test {
protected:
    Harness harness;
    std::optional<std::size_t> chosen;

    void popUp() {
        NativeMenu menu;
        menu.id = "statusItem";
        menu.items.resize(3);
        menu.items[0].title = "开机自启";
        menu.items[2].title = "退出程序";
        harness.menus().popUp(std::move(menu), {}, [this](std::size_t index) { chosen = index; });
    }
};

TYPED_TEST_SUITE_P(NativeMenuContract);

TYPED_TEST_P(NativeMenuContract, TellsWhichItemWasPickedSeparatorsCounted) {
    this->popUp();
    EXPECT_EQ(this->chosen, std::nullopt);
    this->harness.choose("退出程序");
    EXPECT_EQ(this->chosen, 2U);
}

TYPED_TEST_P(NativeMenuContract, TellsNothingWhenItIsDismissed) {
    this->popUp();
    this->harness.dismiss();
    EXPECT_EQ(this->chosen, std::nullopt);
}

REGISTER_TYPED_TEST_SUITE_P(NativeMenuContract, TellsWhichItemWasPickedSeparatorsCounted,
                            TellsNothingWhenItIsDismissed);

}  // namespace orvel::contract
