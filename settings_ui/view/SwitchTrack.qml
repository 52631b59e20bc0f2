import QtQuick
import QtQuick.Window
import Orvel.Controls

// The capsule and the knob of a switch.
Item {
    id: content

    required property bool isOn
    required property bool isDown
    required property bool isHovered
    required property bool isFocused
    required property real trackWidth
    required property real trackHeight
    readonly property alias position: spring.value

    Rectangle {
        id: track

        anchors.centerIn: parent
        width: content.trackWidth
        height: content.trackHeight
        radius: height / 2
        color: content.isOn ? Theme.switchOn : Theme.switchOff

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: content.isDown ? Theme.pressed
                 : content.isHovered ? Theme.hover : "transparent"
        }
        // The capsule alone hardly differs from a light card when off, from a dark one when on.
        Rectangle {
            anchors.fill: parent
            visible: !content.isOn || Theme.isDark
            radius: parent.radius
            color: "transparent"
            border.width: Theme.hairline(Screen.devicePixelRatio)
            border.color: Theme.strokeStrong
        }
        Rectangle {
            x: knob.x - 0.5
            y: knob.y + 0.5
            width: knob.width + 1
            height: knob.height + 1
            radius: height / 2
            color: Theme.switchKnobShadow
        }
        Rectangle {
            id: knob

            readonly property real gap: 2
            readonly property real way: track.width - width - 2 * gap

            x: gap + way * spring.value
            y: gap
            width: height
            height: track.height - 2 * gap
            radius: height / 2
            color: Theme.switchKnob
        }
        SpringMotion {
            id: spring

            to: content.isOn ? 1 : 0
            response: 0.25
            dampingFraction: 0.7
            isAnimated: !Theme.isStill && content.Window.window !== null
                        && content.Window.window.visible
        }
        FocusRing {
            shown: content.isFocused
            cornerRadius: track.radius
        }
    }
}
