#pragma once

#include "platform/x11/key_map.hpp"

#include <X11/keysym.h>

namespace orvel::x11::test {

/// X keycodes of an ordinary PC keyboard.
namespace pc {
inline constexpr XKeycode escape = 9, digit1 = 10, backspace = 22, tab = 23, q = 24, w = 25, e = 26,
                          returnKey = 36, leftControl = 37, a = 38, s = 39, d = 40, leftShift = 50,
                          z = 52, x = 53, c = 54, v = 55, rightShift = 62, leftAlt = 64, space = 65,
                          capsLock = 66, f2 = 68, numLock = 77, rightControl = 105, rightAlt = 108,
                          left = 113, right = 114, home = 110, forwardDelete = 119, blank = 120,
                          mute = 121, leftSuper = 133, rightSuper = 134, menu = 135;
}  // namespace pc

/// A keymap as the server describes it for a US layout.
inline std::vector<XKeyDescription> pcKeys() {
    return {
        {pc::escape, "ESC", {XK_Escape}},
        {pc::digit1, "AE01", {XK_1, XK_exclam}},
        {pc::backspace, "BKSP", {XK_BackSpace}},
        {pc::tab, "TAB", {XK_Tab}},
        {pc::q, "AD01", {XK_q, XK_Q}},
        {pc::w, "AD02", {XK_w, XK_W}},
        {pc::e, "AD03", {XK_e, XK_E}},
        {pc::returnKey, "RTRN", {XK_Return}},
        {pc::leftControl, "LCTL", {XK_Control_L}},
        {pc::a, "AC01", {XK_a, XK_A}},
        {pc::s, "AC02", {XK_s, XK_S}},
        {pc::d, "AC03", {XK_d, XK_D}},
        {pc::leftShift, "LFSH", {XK_Shift_L}},
        {pc::z, "AB01", {XK_z, XK_Z}},
        {pc::x, "AB02", {XK_x, XK_X}},
        {pc::c, "AB03", {XK_c, XK_C}},
        {pc::v, "AB04", {XK_v, XK_V}},
        {pc::rightShift, "RTSH", {XK_Shift_R}},
        {pc::leftAlt, "LALT", {XK_Alt_L, XK_Meta_L}},
        {pc::space, "SPCE", {XK_space}},
        {pc::capsLock, "CAPS", {XK_Caps_Lock}},
        {pc::f2, "FK02", {XK_F2}},
        {pc::numLock, "NMLK", {XK_Num_Lock}},
        {92, "LVL3", {XK_ISO_Level3_Shift}},
        {pc::rightControl, "RCTL", {XK_Control_R}},
        {pc::rightAlt, "RALT", {XK_Alt_R, XK_Meta_R}},
        {pc::home, "HOME", {XK_Home}},
        {pc::left, "LEFT", {XK_Left}},
        {pc::right, "RGHT", {XK_Right}},
        {pc::forwardDelete, "DELE", {XK_Delete}},
        {pc::blank, "I120", {}},
        {pc::mute, "MUTE", {0x1008ff12}},
        {pc::leftSuper, "LWIN", {XK_Super_L}},
        {pc::rightSuper, "RWIN", {XK_Super_R}},
        {pc::menu, "COMP", {XK_Menu}},
        {203, "MDSW", {XK_Mode_switch}},
        {204, "ALT", {0, XK_Alt_L}},
        {206, "SUPR", {0, XK_Super_L}},
    };
}

}  // namespace orvel::x11::test
