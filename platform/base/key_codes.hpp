#pragma once

#include <cstdint>

namespace orvel {

/// Virtual key code: names the place of a key, in the numbers of macOS.
using KeyCode = std::int64_t;

namespace key {
inline constexpr KeyCode a = 0, s = 1, d = 2, f = 3, h = 4, g = 5, z = 6, x = 7, c = 8, v = 9;
inline constexpr KeyCode isoSection = 10, b = 11, q = 12, w = 13, e = 14, r = 15, y = 16, t = 17;
inline constexpr KeyCode digit1 = 18, digit2 = 19, digit3 = 20, digit4 = 21, digit6 = 22;
inline constexpr KeyCode digit5 = 23, equal = 24, digit9 = 25, digit7 = 26, minus = 27;
inline constexpr KeyCode digit8 = 28, digit0 = 29, rightBracket = 30, o = 31, u = 32;
inline constexpr KeyCode leftBracket = 33, i = 34, p = 35, returnKey = 36, l = 37, j = 38;
inline constexpr KeyCode quote = 39, k = 40, semicolon = 41, backslash = 42, comma = 43;
inline constexpr KeyCode slash = 44, n = 45, m = 46, period = 47, tab = 48, space = 49;
inline constexpr KeyCode grave = 50, backspace = 51, escape = 53, rightCommand = 54;
inline constexpr KeyCode leftCommand = 55, leftShift = 56, capsLock = 57, leftOption = 58;
inline constexpr KeyCode leftControl = 59, rightShift = 60, rightOption = 61, rightControl = 62;
inline constexpr KeyCode fn = 63, keypadDecimal = 65, keypadMultiply = 67, keypadPlus = 69;
inline constexpr KeyCode keypadClear = 71, keypadDivide = 75, keypadEnter = 76;
inline constexpr KeyCode keypadMinus = 78, keypadEquals = 81, keypad0 = 82, keypad1 = 83;
inline constexpr KeyCode keypad2 = 84, keypad3 = 85, keypad4 = 86, keypad5 = 87, keypad6 = 88;
inline constexpr KeyCode keypad7 = 89, keypad8 = 91, keypad9 = 92;
inline constexpr KeyCode f5 = 96, f6 = 97, f7 = 98, f3 = 99, f8 = 100, f9 = 101, f11 = 103;
inline constexpr KeyCode f13 = 105, f16 = 106, f14 = 107, f10 = 109, contextMenu = 110;
inline constexpr KeyCode f12 = 111, f15 = 113, help = 114, home = 115, pageUp = 116;
inline constexpr KeyCode forwardDelete = 117, f4 = 118, end = 119, f2 = 120, pageDown = 121;
inline constexpr KeyCode f1 = 122, leftArrow = 123, rightArrow = 124, downArrow = 125;
inline constexpr KeyCode upArrow = 126;
}  // namespace key

}  // namespace orvel
