#pragma once

#include <cstdint>

namespace orvel {

/// Modifier flags of an event, a bit mask in the numbers of macOS.
using EventFlags = std::uint64_t;

namespace flag {
inline constexpr EventFlags none = 0;
inline constexpr EventFlags capsLock = 0x10000;
inline constexpr EventFlags shift = 0x20000;
inline constexpr EventFlags control = 0x40000;
inline constexpr EventFlags option = 0x80000;
inline constexpr EventFlags command = 0x100000;
inline constexpr EventFlags numericPad = 0x200000;
inline constexpr EventFlags secondaryFn = 0x800000;
}  // namespace flag

/// True when every bit of `wanted` is set.
constexpr bool holds(EventFlags flags, EventFlags wanted) { return (flags & wanted) == wanted; }

/// True when at least one bit of `any` is set.
constexpr bool holdsAny(EventFlags flags, EventFlags any) { return (flags & any) != 0; }

}  // namespace orvel
