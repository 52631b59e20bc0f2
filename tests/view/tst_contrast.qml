import QtQuick
import QtTest
import Orvel.Controls

// Colours on what lies below them, as docs/settings_panel.md promises.
TestCase {
    id: test

    name: "Contrast"

    readonly property var cardColors: [Qt.rgba(0.7, 0.4, 0.8, 1), Qt.rgba(0.4, 0.6, 0.9, 1),
                                       Qt.rgba(0.4, 0.7, 0.5, 1), Qt.rgba(0.9, 0.6, 0.4, 1),
                                       Qt.rgba(0.9, 0.4, 0.4, 1)]
    readonly property var purple: cardColors[0]

    function cleanup() { Appearance.isDark = false }

    function linear(part) { return part <= 0.03928 ? part / 12.92 : Math.pow((part + 0.055) / 1.055, 2.4) }
    function luminance(color) {
        return 0.2126 * linear(color.r) + 0.7152 * linear(color.g) + 0.0722 * linear(color.b)
    }
    // What is seen of a colour that lets something through.
    function over(color, ground) {
        const part = (a, b) => a * color.a + b * (1 - color.a)
        return Qt.rgba(part(color.r, ground.r), part(color.g, ground.g), part(color.b, ground.b), 1)
    }
    function contrast(color, ground) {
        const a = luminance(over(color, ground))
        const b = luminance(ground)
        return (Math.max(a, b) + 0.05) / (Math.min(a, b) + 0.05)
    }
    function atLeast(least, color, ground, what) {
        const found = contrast(color, ground)
        verify(found >= least, what + " has " + found.toFixed(2) + " : 1 on " + ground)
    }
    // At rest and below the pointer.
    function tints(color) {
        return [Theme.tint(color, Theme.cardTint), Theme.tint(color, Theme.cardTintHovered)]
    }
    function opaque(color) { return Qt.rgba(color.r, color.g, color.b, 1) }

    function looks_data() { return [{tag: "light", isDark: false}, {tag: "dark", isDark: true}] }

    function test_texts_on_plain_surfaces_data() { return looks_data() }
    function test_texts_on_plain_surfaces(look) {
        Appearance.isDark = look.isDark
        for (const ground of [opaque(Theme.surface), Theme.surfaceRaised]) {
            atLeast(4.5, Theme.text, ground, "text")
            atLeast(4.5, Theme.textSoft, ground, "textSoft")
            atLeast(4.5, Theme.danger, ground, "danger")
            atLeast(4.5, Theme.warning, ground, "warning")
            atLeast(3, Theme.strokeStrong, ground, "strokeStrong")
            atLeast(3, Theme.focus, ground, "focus")
        }
        atLeast(4.5, Theme.textOnAccent, Theme.accentSurface, "textOnAccent")
    }

    function test_texts_and_symbols_on_cards_data() { return looks_data() }
    function test_texts_and_symbols_on_cards(look) {
        Appearance.isDark = look.isDark
        for (const color of cardColors) {
            for (const ground of tints(color)) {
                atLeast(4.5, Theme.text, ground, "text")
                atLeast(4.5, Theme.textSoft, ground, "textSoft")
                atLeast(3, Theme.ink(color), ground, "ink")
                atLeast(3, Theme.focus, ground, "focus")
            }
        }
        for (const ground of tints(purple)) atLeast(4.5, Theme.danger, ground, "danger")
    }

    function test_the_outline_of_a_switch_shows_on_every_card_data() { return looks_data() }
    function test_the_outline_of_a_switch_shows_on_every_card(look) {
        Appearance.isDark = look.isDark
        for (const color of cardColors) {
            for (const ground of tints(color)) {
                // The outline lies on the capsule.
                atLeast(3, over(Theme.strokeStrong, over(Theme.switchOff, ground)), ground, "off")
                const on = look.isDark ? over(Theme.strokeStrong, Theme.switchOn) : Theme.switchOn
                atLeast(3, on, ground, "on")
            }
        }
        atLeast(3, Theme.switchKnob, Theme.switchOn, "knob")
    }

    function test_texts_and_symbols_on_keys_data() { return looks_data() }
    function test_texts_and_symbols_on_keys(look) {
        Appearance.isDark = look.isDark
        for (const ground of [Theme.keyFace, Theme.keyFaceHover, Theme.keyFacePressed]) {
            atLeast(4.5, Theme.keyText, ground, "keyText")
            atLeast(4.5, Theme.keyTextSoft, ground, "keyTextSoft")
            atLeast(4.5, Theme.keyRemappedText, ground, "keyRemappedText")
            atLeast(3, Theme.keyRemapped, ground, "keyRemapped")
        }
        atLeast(4.5, Theme.keyLabel, Theme.keyboard, "keyLabel")
        atLeast(3, Theme.keyRemapped, Theme.keyboard, "keyRemapped")
        atLeast(3, Theme.keyFocus, Theme.keyboard, "keyFocus")
    }

    function test_findings_and_the_pause_data() { return looks_data() }
    function test_findings_and_the_pause(look) {
        Appearance.isDark = look.isDark
        for (const amount of [Theme.buttonTint, Theme.buttonTintHovered,
                              Theme.buttonTintPressed]) {
            atLeast(4.5, Theme.warning, Theme.tint(Theme.caution, amount), "the pause")
        }
        atLeast(4.5, Theme.ink(Theme.positive), Theme.tint(Theme.positive, 0.1), "there")
        const tile = look.isDark ? 0.3 : 0.2
        atLeast(3, Theme.ink(Theme.positive), Theme.tint(Theme.positive, tile), "its symbol")
        atLeast(3, Theme.warning, Theme.tint(Theme.caution, tile), "the missing symbol")
    }
}
