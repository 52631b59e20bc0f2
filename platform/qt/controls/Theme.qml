pragma Singleton

import QtQuick
import Orvel.Controls

// The one place for colours, sizes and times. Roles, not values: a view says what a thing is.
QtObject {
    readonly property bool isDark: Appearance.isDark

    // Surfaces are translucent only where the screen can show what lies behind them.
    readonly property real surfaceAlpha: Appearance.isComposited ? 0.96 : 1

    readonly property color surface: isDark ? Qt.rgba(0.118, 0.118, 0.129, surfaceAlpha)
                                            : Qt.rgba(0.965, 0.965, 0.973, surfaceAlpha)
    readonly property color surfaceRaised: isDark ? "#2b2b2f" : "#ffffff"
    readonly property color stroke: isDark ? "#26ffffff" : "#1f000000"
    readonly property color strokeStrong: isDark ? "#80ffffff" : "#80000000"
    // Around what floats above other surfaces.
    readonly property color floatingStroke: isDark ? "#4dffffff" : stroke
    readonly property color text: isDark ? "#f5f5f7" : "#1d1d1f"
    readonly property color textSoft: isDark ? "#b4b4bb" : "#55555a"
    readonly property color textOnAccent: "#ffffff"
    readonly property color accent: isDark ? "#5b8def" : "#2e66d1"
    // Surfaces that carry textOnAccent.
    readonly property color accentSurface: Qt.rgba(0.18, 0.4, 0.82, 1)
    readonly property color positive: "#3d9a5b"
    readonly property color caution: "#f0a020"
    readonly property color danger: isDark ? "#ff7b72" : "#b3211a"
    readonly property color warning: isDark ? "#f5b63d" : "#8a5300"
    readonly property color hover: isDark ? "#14ffffff" : "#0d000000"
    readonly property color pressed: isDark ? "#24ffffff" : "#1a000000"
    readonly property color focus: isDark ? "#8ab0ff" : "#1f57c3"

    readonly property color switchOn: accentSurface
    readonly property color switchOff: Qt.rgba(0.5, 0.5, 0.5, 0.35)
    readonly property color switchKnob: "#ffffff"
    readonly property color switchKnobShadow: Qt.rgba(0, 0, 0, 0.2)

    // The drawn keyboard is dark in light surroundings too.
    readonly property color keyboard: isDark ? "#161618" : "#26262a"
    readonly property color keyFace: isDark ? "#333338" : "#3c3c42"
    readonly property color keyFaceHover: isDark ? "#3e3e44" : "#48484f"
    readonly property color keyFacePressed: isDark ? "#2a2a2e" : "#323237"
    readonly property color keyStroke: "#2effffff"
    readonly property color keyText: "#f4f4f7"
    readonly property color keyTextSoft: "#c6c6ce"
    readonly property color keyLabel: Qt.rgba(1, 1, 1, 0.9)
    readonly property color keyRemapped: "#c48ae0"
    readonly property color keyRemappedText: "#d9acf0"
    readonly property color keyFocus: "#8ab0ff"

    readonly property int grid: 4
    readonly property int panelPadding: 16
    readonly property int groupGap: 12
    readonly property int innerGap: 8
    readonly property int iconGap: 6

    readonly property int panelRadius: 12
    readonly property int cardRadius: 8
    readonly property int controlRadius: 6
    readonly property int keyRadius: 5

    readonly property string fontFamily: Appearance.fontFamily
    readonly property int titleSize: 13
    readonly property int cardTitleSize: 10
    readonly property int bodySize: 11
    readonly property int smallSize: 9
    readonly property real smallLineHeight: 1.25

    readonly property int smallestTarget: 24
    readonly property int focusWidth: 2

    readonly property bool isStill: Appearance.prefersReducedMotion
    readonly property int feedbackTime: isStill ? 0 : 120
    readonly property int surfaceInTime: isStill ? 0 : 200
    // Of a window: only a compositor can let it come softly.
    readonly property int arrivalTime: Appearance.isComposited ? surfaceInTime : 0

    // A line as thin as the screen can draw it.
    function hairline(devicePixelRatio: real): real {
        return 1 / Math.max(1, devicePixelRatio)
    }

    readonly property real cardTint: isDark ? 0.17 : 0.13
    readonly property real cardTintHovered: 0.24
    readonly property real buttonTint: isDark ? 0.18 : 0.24
    readonly property real buttonTintHovered: isDark ? 0.25 : 0.34
    readonly property real buttonTintPressed: isDark ? 0.31 : 0.42

    // A card's colour laid over the surface: group opacity is not to be had in every renderer.
    function tint(color: color, amount: real): color {
        const base = isDark ? Qt.rgba(0.118, 0.118, 0.129, 1) : Qt.rgba(0.985, 0.985, 0.99, 1)
        return Qt.rgba(base.r + (color.r - base.r) * amount, base.g + (color.g - base.g) * amount,
                       base.b + (color.b - base.b) * amount, 1)
    }

    // A card's colour strong enough for a glyph on its own tint.
    function ink(color: color): color {
        return isDark ? Qt.lighter(color, 1.15) : Qt.darker(color, 1.65)
    }
}
