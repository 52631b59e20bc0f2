#pragma once

#include "platform/base/key_codes.hpp"

#include <array>
#include <string_view>

namespace orvel::x11 {

/// One place on the keyboard: its name in an X keymap and its key code.
struct KeyPlace {
    std::string_view name;
    KeyCode code;
};

/// The one table between X11 and macOS keys. X keymaps name keys by place whatever the layout and
/// the numbering of keycodes; so do macOS key codes. Where two places share a code, the first is
/// the one that goes out.
inline constexpr std::array kKeyPlaces{
    KeyPlace{"ESC", key::escape},
    KeyPlace{"FK01", key::f1},
    KeyPlace{"FK02", key::f2},
    KeyPlace{"FK03", key::f3},
    KeyPlace{"FK04", key::f4},
    KeyPlace{"FK05", key::f5},
    KeyPlace{"FK06", key::f6},
    KeyPlace{"FK07", key::f7},
    KeyPlace{"FK08", key::f8},
    KeyPlace{"FK09", key::f9},
    KeyPlace{"FK10", key::f10},
    KeyPlace{"FK11", key::f11},
    KeyPlace{"FK12", key::f12},
    KeyPlace{"FK13", key::f13},
    KeyPlace{"FK14", key::f14},
    KeyPlace{"FK15", key::f15},
    KeyPlace{"FK16", key::f16},
    KeyPlace{"FK17", 64},
    KeyPlace{"FK18", 79},
    KeyPlace{"FK19", 80},
    KeyPlace{"FK20", 90},
    // A Mac takes these three keys of a PC keyboard for its own next to F12.
    KeyPlace{"PRSC", key::f13},
    KeyPlace{"SCLK", key::f14},
    KeyPlace{"PAUS", key::f15},

    KeyPlace{"TLDE", key::grave},
    KeyPlace{"AE01", key::digit1},
    KeyPlace{"AE02", key::digit2},
    KeyPlace{"AE03", key::digit3},
    KeyPlace{"AE04", key::digit4},
    KeyPlace{"AE05", key::digit5},
    KeyPlace{"AE06", key::digit6},
    KeyPlace{"AE07", key::digit7},
    KeyPlace{"AE08", key::digit8},
    KeyPlace{"AE09", key::digit9},
    KeyPlace{"AE10", key::digit0},
    KeyPlace{"AE11", key::minus},
    KeyPlace{"AE12", key::equal},
    KeyPlace{"AE13", 93},
    KeyPlace{"BKSP", key::backspace},

    KeyPlace{"TAB", key::tab},
    KeyPlace{"AD01", key::q},
    KeyPlace{"AD02", key::w},
    KeyPlace{"AD03", key::e},
    KeyPlace{"AD04", key::r},
    KeyPlace{"AD05", key::t},
    KeyPlace{"AD06", key::y},
    KeyPlace{"AD07", key::u},
    KeyPlace{"AD08", key::i},
    KeyPlace{"AD09", key::o},
    KeyPlace{"AD10", key::p},
    KeyPlace{"AD11", key::leftBracket},
    KeyPlace{"AD12", key::rightBracket},
    KeyPlace{"BKSL", key::backslash},

    KeyPlace{"CAPS", key::capsLock},
    KeyPlace{"AC01", key::a},
    KeyPlace{"AC02", key::s},
    KeyPlace{"AC03", key::d},
    KeyPlace{"AC04", key::f},
    KeyPlace{"AC05", key::g},
    KeyPlace{"AC06", key::h},
    KeyPlace{"AC07", key::j},
    KeyPlace{"AC08", key::k},
    KeyPlace{"AC09", key::l},
    KeyPlace{"AC10", key::semicolon},
    KeyPlace{"AC11", key::quote},
    KeyPlace{"AC12", key::backslash},
    KeyPlace{"RTRN", key::returnKey},

    KeyPlace{"LFSH", key::leftShift},
    KeyPlace{"LSGT", key::isoSection},
    KeyPlace{"AB01", key::z},
    KeyPlace{"AB02", key::x},
    KeyPlace{"AB03", key::c},
    KeyPlace{"AB04", key::v},
    KeyPlace{"AB05", key::b},
    KeyPlace{"AB06", key::n},
    KeyPlace{"AB07", key::m},
    KeyPlace{"AB08", key::comma},
    KeyPlace{"AB09", key::period},
    KeyPlace{"AB10", key::slash},
    KeyPlace{"AB11", 94},
    KeyPlace{"RTSH", key::rightShift},

    KeyPlace{"LCTL", key::leftControl},
    KeyPlace{"LWIN", key::leftCommand},
    KeyPlace{"LMTA", key::leftCommand},
    KeyPlace{"LALT", key::leftOption},
    KeyPlace{"SPCE", key::space},
    KeyPlace{"RALT", key::rightOption},
    KeyPlace{"ALGR", key::rightOption},
    KeyPlace{"RWIN", key::rightCommand},
    KeyPlace{"RMTA", key::rightCommand},
    KeyPlace{"COMP", key::contextMenu},
    KeyPlace{"MENU", key::contextMenu},
    KeyPlace{"RCTL", key::rightControl},
    KeyPlace{"HJCV", 102},
    KeyPlace{"HNGL", 104},

    // A Mac keyboard has Help where others have Insert.
    KeyPlace{"INS", key::help},
    KeyPlace{"HELP", key::help},
    KeyPlace{"HOME", key::home},
    KeyPlace{"PGUP", key::pageUp},
    KeyPlace{"DELE", key::forwardDelete},
    KeyPlace{"END", key::end},
    KeyPlace{"PGDN", key::pageDown},
    KeyPlace{"UP", key::upArrow},
    KeyPlace{"LEFT", key::leftArrow},
    KeyPlace{"DOWN", key::downArrow},
    KeyPlace{"RGHT", key::rightArrow},

    KeyPlace{"NMLK", key::keypadClear},
    KeyPlace{"KPDV", key::keypadDivide},
    KeyPlace{"KPMU", key::keypadMultiply},
    KeyPlace{"KPSU", key::keypadMinus},
    KeyPlace{"KPAD", key::keypadPlus},
    KeyPlace{"KPEN", key::keypadEnter},
    KeyPlace{"KPEQ", key::keypadEquals},
    KeyPlace{"KPDL", key::keypadDecimal},
    KeyPlace{"KP0", key::keypad0},
    KeyPlace{"KP1", key::keypad1},
    KeyPlace{"KP2", key::keypad2},
    KeyPlace{"KP3", key::keypad3},
    KeyPlace{"KP4", key::keypad4},
    KeyPlace{"KP5", key::keypad5},
    KeyPlace{"KP6", key::keypad6},
    KeyPlace{"KP7", key::keypad7},
    KeyPlace{"KP8", key::keypad8},
    KeyPlace{"KP9", key::keypad9},
    KeyPlace{"I129", 95},
    KeyPlace{"KPPT", 95},
};

/// Keys without a counterpart on a Mac (media keys, macro keys) have codes from here on: this plus
/// their X keycode. No rule knows them; they pass as other keys.
inline constexpr KeyCode kForeignKeyBase = 256;

}  // namespace orvel::x11
