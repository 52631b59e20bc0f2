#pragma once

#include "platform/log.hpp"
#include "tests/macos/fakes/fake_mac.hpp"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace orvel::macos {

/// A fresh Mac of fakes, in which every reference is given back.
class MacTest : public ::testing::Test {
protected:
    MacTest() {
        fake::reset();
        references_ = fake::liveReferences();
    }
    void TearDown() override {
        fake::runDue();
        EXPECT_EQ(fake::liveReferences() - references_ - kept_, 0) << "references not given back";
    }
    /// For ports that a fixture keeps until after the check: what they hold counts as given back.
    void keepReferences() { kept_ = fake::liveReferences() - references_; }

    static fake::World& mac() { return fake::world(); }

private:
    int references_ = 0;
    int kept_ = 0;
};

/// Keeps what is reported.
class LogLines final : public Log {
public:
    void line(std::string_view text) override { lines.emplace_back(text); }
    [[nodiscard]] bool isTracing() const override { return false; }
    void trace(std::string_view) override {}

    std::vector<std::string> lines;
};

}  // namespace orvel::macos
