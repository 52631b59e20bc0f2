#pragma once

#include "engine/rule.hpp"

namespace orvel::gates {

template <PreferenceKey key>
bool preferenceIsOn(const RuleContext& context) {
    return context.services.preferences.boolForKey(key);
}

template <PreferenceKey first, PreferenceKey second>
bool eitherIsOn(const RuleContext& context) {
    return preferenceIsOn<first>(context) || preferenceIsOn<second>(context);
}

/// The gate of one feature switch, named as the switch is stored.
template <PreferenceKey key>
inline constexpr Gate card{preferenceInfo(key).name, preferenceIsOn<key>};

inline constexpr Gate always{"always", [](const RuleContext&) { return true; }};
inline constexpr Gate cardModifier = card<PreferenceKey::cardModifier>;
inline constexpr Gate cardEject = card<PreferenceKey::cardEject>;
inline constexpr Gate cardSnap = card<PreferenceKey::cardSnap>;
inline constexpr Gate cardFinder = card<PreferenceKey::cardFinder>;
inline constexpr Gate cardSyscmd = card<PreferenceKey::cardSyscmd>;
inline constexpr Gate cardTab = card<PreferenceKey::cardTab>;
inline constexpr Gate cardFn = card<PreferenceKey::cardFn>;
inline constexpr Gate cardScroll = card<PreferenceKey::cardScroll>;
inline constexpr Gate cardShift = card<PreferenceKey::cardShift>;
inline constexpr Gate cardFkeys = card<PreferenceKey::cardFkeys>;
inline constexpr Gate anyWinCard{
    "card_syscmd or card_win_advanced",
    eitherIsOn<PreferenceKey::cardSyscmd, PreferenceKey::cardWinAdvanced>};
inline constexpr Gate sideButtons{
    "cardMouseSide", [](const RuleContext& c) { return c.state.isMouseSideButtonEnabled; }};

}  // namespace orvel::gates
