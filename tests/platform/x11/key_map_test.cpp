#include "platform/x11/key_map.hpp"

#include "platform/x11/fn_key.hpp"
#include "platform/x11/key_places.hpp"
#include "tests/platform/x11/pc_keyboard.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace orvel::x11::test {
namespace {

std::vector<XKeyDescription> pcKeysWith(std::vector<XKeyDescription> changed) {
    auto keys = pcKeys();
    for (const auto& change : changed) {
        std::erase_if(keys, [&](const auto& key) { return key.keycode == change.keycode; });
        keys.push_back(change);
    }
    return keys;
}

TEST(KeyPlaces, EachPlaceIsNamedOnceAndFitsAKeymap) {
    std::set<std::string_view> names;
    for (const KeyPlace& place : kKeyPlaces) {
        EXPECT_TRUE(names.insert(place.name).second) << place.name;
        EXPECT_LE(place.name.size(), 4U) << place.name;
        EXPECT_LT(place.code, 128) << place.name;
    }
}

TEST(KeyMap, KeysComeInByTheirPlaceWhateverTheLayoutWritesOnThem) {
    const KeyMap french(pcKeysWith({{pc::q, "AD01", {XK_a, XK_A}}}));
    EXPECT_EQ(french.keyCodeOf(pc::q), key::q);
    EXPECT_EQ(french.keycodeOf(key::q), pc::q);
}

TEST(KeyMap, PlacesCountWhateverTheNumberingOfKeycodes) {
    const KeyMap map({{100, "LEFT", {XK_Left}}, {113, "RALT", {XK_Alt_R}}});
    EXPECT_EQ(map.keyCodeOf(100), key::leftArrow);
    EXPECT_EQ(map.keyCodeOf(113), key::rightOption);
    EXPECT_EQ(map.keycodeOf(key::leftArrow), 100);
}

TEST(KeyMap, ModifiersComeInByPlace) {
    const KeyMap map(pcKeys());
    EXPECT_EQ(map.keyCodeOf(pc::leftSuper), key::leftCommand);
    EXPECT_EQ(map.keyCodeOf(pc::rightSuper), key::rightCommand);
    EXPECT_EQ(map.keyCodeOf(pc::leftAlt), key::leftOption);
    EXPECT_EQ(map.keyCodeOf(pc::leftControl), key::leftControl);
    EXPECT_EQ(map.keyCodeOf(pc::capsLock), key::capsLock);
}

TEST(KeyMap, AnExchangeOfAltAndSuperChangesWhatGoesOutOnly) {
    const KeyMap map(
        pcKeysWith({{pc::leftAlt, "LALT", {XK_Super_L}}, {pc::leftSuper, "LWIN", {XK_Alt_L}}}));
    EXPECT_EQ(map.keyCodeOf(pc::leftAlt), key::leftOption);
    EXPECT_EQ(map.leftKey(XModifier::super), pc::leftAlt);
    EXPECT_EQ(map.modifierOf(pc::leftSuper), XModifier::alt);
}

TEST(KeyMap, CapsLockUsedAsControlIsControl) {
    const KeyMap map(pcKeysWith({{pc::capsLock, "CAPS", {XK_Control_L}}}));
    EXPECT_EQ(map.keyCodeOf(pc::capsLock), key::leftControl);
    EXPECT_EQ(map.modifierOf(pc::capsLock), XModifier::control);
}

TEST(KeyMap, CapsLockUsedAsAnotherKeyIsNoKeyOfAMac) {
    const KeyMap map(pcKeysWith({{pc::capsLock, "CAPS", {XK_Escape}}}));
    EXPECT_EQ(map.keyCodeOf(pc::capsLock), kForeignKeyBase + pc::capsLock);
}

TEST(KeyMap, KeysWithoutAPlaceOnAMacKeepTheirIdentity) {
    const KeyMap map(pcKeys());
    EXPECT_EQ(map.keyCodeOf(pc::mute), kForeignKeyBase + pc::mute);
    EXPECT_EQ(map.keycodeOf(kForeignKeyBase + pc::mute), pc::mute);
}

TEST(KeyMap, OfTwoPlacesWithOneCodeTheFirstGoesOut) {
    const KeyMap map({{107, "PRSC", {XK_Print}}, {191, "FK13", {XK_F13}}});
    EXPECT_EQ(map.keyCodeOf(107), key::f13);
    EXPECT_EQ(map.keycodeOf(key::f13), 191);
}

TEST(KeyMap, CodesThatNoKeyHasGoOutAsNothing) {
    const KeyMap map(pcKeys());
    EXPECT_EQ(map.keycodeOf(key::f16), 0);
    EXPECT_EQ(map.keycodeOf(-1), 0);
    EXPECT_EQ(map.keycodeOf(200), 0);
    EXPECT_EQ(map.keycodeOf(100000), 0);
}

TEST(KeyMap, TheNamedKeyActsAsFnAndHoldsNoModifier) {
    const KeyMap map(pcKeys(), "RALT");
    EXPECT_EQ(map.keyCodeOf(pc::rightAlt), key::fn);
    EXPECT_EQ(map.modifierOf(pc::rightAlt), std::nullopt);
}

TEST(KeyMap, TheFnKeyMayBeNamedByItsSymbol) {
    EXPECT_EQ(KeyMap(pcKeys(), "Menu").keyCodeOf(pc::menu), key::fn);
    EXPECT_EQ(KeyMap(pcKeys(), "menu").keyCodeOf(pc::menu), key::fn);
    EXPECT_EQ(KeyMap(pcKeys(), "Scroll_Lock").keyCodeOf(pc::menu), key::contextMenu);
}

TEST(FnKey, IsReadFromTheUsersTable) {
    const FnKey fn = readFnKey(parsePlatformTable("p.conf", "[keys]\nfn = Menu\n"));
    EXPECT_EQ(fn.name, "Menu");
    EXPECT_TRUE(fn.errors.empty());
    EXPECT_EQ(readFnKey(parsePlatformTable("p.conf", "")).name, "");
}

TEST(FnKey, WrongLinesAreNamedWithFileAndLine) {
    const FnKey fn =
        readFnKey(parsePlatformTable("p.conf", "[keys]\nhyper = Menu\nfn = NoSuchKey\n"));
    EXPECT_EQ(fn.name, "");
    EXPECT_THAT(fn.errors, testing::ElementsAre(testing::StartsWith("p.conf:2: "),
                                                testing::StartsWith("p.conf:3: no key is called")));
}

TEST(KeyMap, TheNeutralKeyHasNoSymbol) { EXPECT_EQ(KeyMap(pcKeys()).neutralKey(), pc::blank); }

TEST(KeyMap, WithoutAnUnusedKeyControlIsNeutral) {
    auto keys = pcKeys();
    std::erase_if(keys, [](const auto& key) { return key.keycode == pc::blank; });
    EXPECT_EQ(KeyMap(keys).neutralKey(), pc::leftControl);
}

TEST(KeyMap, FindsKeysByTheirSymbol) {
    const KeyMap map(pcKeys());
    EXPECT_EQ(map.keyWithSymbol(0x1008ff12), pc::mute);
    EXPECT_EQ(map.keyWithSymbol(0x1008ff99), 0);
}

TEST(KeyMap, AltGrIsInAltsPlace) {
    const KeyMap map(pcKeysWith({{pc::rightAlt, "RALT", {XK_ISO_Level3_Shift}}}));
    EXPECT_EQ(map.keyCodeOf(pc::rightAlt), key::rightOption);
    EXPECT_EQ(map.modifierOf(pc::rightAlt), XModifier::alt);
    EXPECT_EQ(map.leftKey(XModifier::alt), pc::leftAlt);
}

TEST(Translation, CommandIsControlAndControlIsSuperForApplications) {
    const auto one = [](XModifier modifier) { return XModifiers().set(indexOf(modifier)); };
    EXPECT_EQ(modifiersForFlags(flag::command), one(XModifier::control));
    EXPECT_EQ(modifiersForFlags(flag::control), one(XModifier::super));
    EXPECT_EQ(modifiersForFlags(flag::option), one(XModifier::alt));
    EXPECT_EQ(modifiersForFlags(flag::shift), one(XModifier::shift));
    EXPECT_EQ(modifiersForFlags(flag::capsLock | flag::numericPad | flag::secondaryFn),
              XModifiers());
}

TEST(Translation, ModifierKeysGoOutOnTheirSide) {
    const KeyMap map(pcKeys());
    EXPECT_EQ(modifierKeyFor(map, key::leftCommand), pc::leftControl);
    EXPECT_EQ(modifierKeyFor(map, key::rightCommand), pc::rightControl);
    EXPECT_EQ(modifierKeyFor(map, key::leftControl), pc::leftSuper);
    EXPECT_EQ(modifierKeyFor(map, key::rightOption), pc::rightAlt);
    EXPECT_EQ(modifierKeyFor(map, key::rightShift), pc::rightShift);
    EXPECT_EQ(modifierKeyFor(map, key::capsLock), pc::capsLock);
    EXPECT_EQ(modifierKeyFor(map, key::fn), 0);
}

TEST(Translation, KeysCarryTheFlagsThatAMacGivesThem) {
    EXPECT_EQ(ownFlagsOfKey(key::leftArrow), flag::numericPad | flag::secondaryFn);
    EXPECT_EQ(ownFlagsOfKey(key::f2), flag::secondaryFn);
    EXPECT_EQ(ownFlagsOfKey(key::keypad5), flag::numericPad);
    EXPECT_EQ(ownFlagsOfKey(key::a), flag::none);
    EXPECT_EQ(ownFlagsOfKey(key::backspace), flag::none);
    EXPECT_EQ(ownFlagsOfKey(kForeignKeyBase + 70), flag::none);
}

}  // namespace
}  // namespace orvel::x11::test
