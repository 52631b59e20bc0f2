#pragma once

namespace orvel::rig {

/// Modifier bits as X events carry them, named by what an ordinary PC layout uses them for.
constexpr unsigned kShift = 1U << 0;
constexpr unsigned kCapsLock = 1U << 1;
constexpr unsigned kControl = 1U << 2;
constexpr unsigned kAlt = 1U << 3;
constexpr unsigned kNumLock = 1U << 4;
constexpr unsigned kSuper = 1U << 6;

}  // namespace orvel::rig
