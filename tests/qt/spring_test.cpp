#include "platform/qt/spring.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace orvel::qt {
namespace {

/// The same movement by small steps of Runge and Kutta.
SpringPoint integrated(const Spring& spring, double seconds, double startVelocity) {
    const double omega = 2 * std::numbers::pi / spring.response;
    const auto pull = [&](double x, double v) {
        return omega * omega * (1 - x) - 2 * spring.dampingFraction * omega * v;
    };
    constexpr int kSteps = 20000;
    const double h = seconds / kSteps;
    double x = 0;
    double v = startVelocity;
    for (int i = 0; i < kSteps; ++i) {
        const double k1 = pull(x, v);
        const double k2 = pull(x + h / 2 * v, v + h / 2 * k1);
        const double k3 = pull(x + h / 2 * (v + h / 2 * k1), v + h / 2 * k2);
        const double k4 = pull(x + h * (v + h / 2 * k2), v + h * k3);
        x += h * v + h * h / 6 * (k1 + k2 + k3);
        v += h / 6 * (k1 + 2 * k2 + 2 * k3 + k4);
    }
    return {x, v};
}

struct Case {
    double response;
    double dampingFraction;
    double startVelocity;
};

class SpringTest : public testing::TestWithParam<Case> {};

TEST_P(SpringTest, FollowsTheEquationOfADampedOscillation) {
    const auto [response, dampingFraction, startVelocity] = GetParam();
    const Spring spring{response, dampingFraction};
    for (const double seconds : {0.01, 0.1, 0.25, 0.6}) {
        const SpringPoint expected = integrated(spring, seconds, startVelocity);
        const SpringPoint actual = springAt(spring, seconds, startVelocity);
        EXPECT_NEAR(actual.position, expected.position, 1e-6) << seconds;
        EXPECT_NEAR(actual.velocity, expected.velocity, 1e-4) << seconds;
    }
}

INSTANTIATE_TEST_SUITE_P(Springs, SpringTest,
                         testing::Values(Case{0.25, 0.7, 0}, Case{0.3, 0.3, 4}, Case{0.5, 1, 0},
                                         Case{0.5, 1, -3}, Case{0.4, 1.5, 0}, Case{0.4, 1.5, 6}));

TEST(Spring, BeginsAtRestWhereItIs) {
    const SpringPoint begin = springAt({0.25, 0.7}, 0, 0);
    EXPECT_DOUBLE_EQ(begin.position, 0);
    EXPECT_NEAR(begin.velocity, 0, 1e-12);
    EXPECT_FALSE(isSettled(begin));
}

TEST(Spring, SettlesAtItsEnd) { EXPECT_TRUE(isSettled(springAt({0.25, 0.7}, 2, 0))); }

}  // namespace
}  // namespace orvel::qt
