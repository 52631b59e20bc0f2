#include "engine/rule_table.hpp"

#include "engine/gates.hpp"
#include "engine/rules/app_switcher.hpp"
#include "engine/rules/browser_habits.hpp"
#include "engine/rules/clipboard_panel_keys.hpp"
#include "engine/rules/engine_gates.hpp"
#include "engine/rules/escape_keys.hpp"
#include "engine/rules/finder_keys.hpp"
#include "engine/rules/fn_arrows.hpp"
#include "engine/rules/forward_delete.hpp"
#include "engine/rules/function_row.hpp"
#include "engine/rules/input_source_keys.hpp"
#include "engine/rules/key_up_completion.hpp"
#include "engine/rules/modifier_remap.hpp"
#include "engine/rules/mouse_buttons.hpp"
#include "engine/rules/option_menu_search.hpp"
#include "engine/rules/own_events.hpp"
#include "engine/rules/redo.hpp"
#include "engine/rules/scroll_reversal.hpp"
#include "engine/rules/win_commands.hpp"
#include "engine/rules/win_key_tap.hpp"
#include "engine/rules/window_snap_keys.hpp"

#include <array>
#include <utility>

namespace orvel {

namespace {

using namespace gates;
using namespace rules;

constexpr EventMask kKeyDown = maskOf(EventType::keyDown);
constexpr EventMask kKeyUp = maskOf(EventType::keyUp);
constexpr EventMask kFlagsChanged = maskOf(EventType::flagsChanged);
constexpr EventMask kWheel = maskOf(EventType::scrollWheel);
constexpr EventMask kButtonDown = maskOf(EventType::otherMouseDown);
constexpr EventMask kButtonUp = maskOf(EventType::otherMouseUp);
constexpr EventMask kAnyEvent = ~EventMask{0};

// clang-format off
constexpr std::array kRules{
    // name                     events                   gate           release                apply
    Rule{"own events",           kAnyEvent,               always,        Release::none,         passOwnEvents},
    Rule{"clipboard panel keys", kKeyDown | kKeyUp,       always,        Release::ownBothEnds,  clipboardPanelKeys},
    Rule{"master switch",        kAnyEvent,               always,        Release::none,         requireWindowsMode},
    Rule{"other keys",           kKeyDown,                always,        Release::none,         trackOtherKeys},
    Rule{"pause",                kAnyEvent,               always,        Release::none,         requireRunning},

    Rule{"fn sacrifice",         kFlagsChanged,           cardEject,     Release::none,         fnSacrifice},
    Rule{"caps lock",            kFlagsChanged,           cardShift,     Release::none,         capsLockInputSource},
    Rule{"single shift",         kFlagsChanged,           cardShift,     Release::none,         singleShiftInputSource},
    Rule{"modifier remap",       kFlagsChanged,           cardModifier,  Release::none,         remapModifierKey},
    Rule{"option menu search",   kFlagsChanged,           always,        Release::none,         optionMenuSearch},
    Rule{"lone win",             kFlagsChanged,           always,        Release::none,         winKeyTap},

    Rule{"scroll reversal",      kWheel,                  cardScroll,    Release::none,         reverseWheel},

    Rule{"middle click",         kButtonDown,             cardFinder,    Release::none,         middleClickInFinder},
    Rule{"side buttons",         kButtonDown | kButtonUp, gates::sideButtons, Release::none,     rules::sideButtons},

    Rule{"held keys",            kKeyDown,                always,        Release::ownBothEnds,  heldKeys},
    Rule{"lost release",         kKeyDown,                always,        Release::none,         forgetLostRelease},
    Rule{"forward delete",       kKeyDown,                cardEject,     Release::followsPress, forwardDelete},
    Rule{"key-up completion",    kKeyUp,                  always,        Release::none,         keyUpCompletion},
    Rule{"escape keys",          kKeyDown,                always,        Release::followsPress, escapeKeys},
    Rule{"function row",         kKeyDown,                cardFkeys,     Release::followsPress, functionRow},
    Rule{"finder keys",          kKeyDown,                cardFinder,    Release::followsPress, finderKeys},
    Rule{"win commands",         kKeyDown,                anyWinCard,    Release::followsPress, winCommands},
    Rule{"win digits",           kKeyDown,                anyWinCard,    Release::followsPress, winDigits},
    Rule{"browser habits",       kKeyDown,                cardSyscmd,    Release::followsPress, browserHabits},
    Rule{"window snap keys",     kKeyDown,                cardSnap,      Release::followsPress, windowSnapKeys},
    Rule{"app switcher",         kKeyDown,                cardTab,       Release::followsPress, appSwitcher},
    Rule{"fn arrows",            kKeyDown,                cardFn,        Release::followsPress, fnArrows},
    Rule{"key-level remap",      kKeyDown | kKeyUp,       cardModifier,  Release::none,         remapKeyModifiers},
    Rule{"redo",                 kKeyDown,                cardModifier,  Release::followsPress, redo},
};
// clang-format on

constexpr bool namesAreUnique() {
    for (std::size_t i = 0; i < kRules.size(); ++i) {
        for (std::size_t j = i + 1; j < kRules.size(); ++j) {
            if (kRules[i].name == kRules[j].name) return false;
        }
    }
    return true;
}
static_assert(namesAreUnique());

constexpr std::array<std::pair<EventMask, std::string_view>, 6> kEventNames{{
    {kKeyDown, "key down"},
    {kKeyUp, "key up"},
    {kFlagsChanged, "modifiers"},
    {kWheel, "wheel"},
    {kButtonDown, "button down"},
    {kButtonUp, "button up"},
}};

std::string eventNames(EventMask events) {
    if (events == kAnyEvent) return "every event";
    std::string names;
    for (const auto& [mask, name] : kEventNames) {
        if ((events & mask) == 0) continue;
        if (!names.empty()) names += ", ";
        names += name;
    }
    return names;
}

}  // namespace

std::span<const Rule> ruleTable() { return kRules; }

std::string describeRules() {
    std::string text = "| # | rule | events | switch |\n|---|---|---|---|\n";
    int number = 0;
    for (const Rule& rule : kRules) {
        text += "| " + std::to_string(++number) + " | " + std::string(rule.name) + " | " +
                eventNames(rule.events) + " | " + std::string(rule.gate.name) + " |\n";
    }
    return text;
}

}  // namespace orvel
