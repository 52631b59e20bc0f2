#pragma once

namespace orvel::qt {

/// A spring as designers give it. `response` is the period in seconds without damping, a
/// `dampingFraction` of 1 never overshoots.
struct Spring {
    double response = 0.5;
    double dampingFraction = 1;
};

/// How far a movement from 0 to 1 is, and how fast, at one moment.
struct SpringPoint {
    double position = 0;
    double velocity = 0;  ///< per second
};

/// `seconds` after the start with `startVelocity`, by the closed form of a damped oscillation.
SpringPoint springAt(const Spring& spring, double seconds, double startVelocity);

/// Whether the movement has come so close to its end that nobody sees the rest.
bool isSettled(const SpringPoint& point);

}  // namespace orvel::qt
