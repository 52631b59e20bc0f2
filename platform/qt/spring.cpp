#include "platform/qt/spring.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orvel::qt {

namespace {

constexpr double kSettled = 0.001;
/// Closer to 1 than this, the oscillating form divides by nearly nothing.
constexpr double kCritical = 1e-6;

double angularFrequency(const Spring& spring) {
    return 2 * std::numbers::pi / std::max(spring.response, 1e-3);
}

SpringPoint underdamped(double zeta, double omega, double t, double v0) {
    const double damped = omega * std::sqrt(1 - zeta * zeta);
    const double a = (zeta * omega - v0) / damped;
    const double decay = std::exp(-zeta * omega * t);
    const double cosine = std::cos(damped * t);
    const double sine = std::sin(damped * t);
    return {1 - decay * (cosine + a * sine),
            decay * (zeta * omega * (cosine + a * sine) + damped * (sine - a * cosine))};
}

SpringPoint critical(double omega, double t, double v0) {
    const double decay = std::exp(-omega * t);
    const double a = omega - v0;
    return {1 - decay * (1 + a * t), decay * (omega * (1 + a * t) - a)};
}

SpringPoint overdamped(double zeta, double omega, double t, double v0) {
    const double root = std::sqrt(zeta * zeta - 1);
    const double slow = -omega * (zeta - root);
    const double fast = -omega * (zeta + root);
    const double a = (-fast - v0) / (slow - fast);
    const double b = (-slow - v0) / (slow - fast);
    return {1 - (a * std::exp(slow * t) - b * std::exp(fast * t)),
            -(a * slow * std::exp(slow * t) - b * fast * std::exp(fast * t))};
}

}  // namespace

SpringPoint springAt(const Spring& spring, double seconds, double startVelocity) {
    const double zeta = spring.dampingFraction;
    const double omega = angularFrequency(spring);
    if (zeta < 1 - kCritical) return underdamped(zeta, omega, seconds, startVelocity);
    if (zeta > 1 + kCritical) return overdamped(zeta, omega, seconds, startVelocity);
    return critical(omega, seconds, startVelocity);
}

bool isSettled(const SpringPoint& point) {
    return std::abs(1 - point.position) < kSettled && std::abs(point.velocity) < kSettled * 10;
}

}  // namespace orvel::qt
