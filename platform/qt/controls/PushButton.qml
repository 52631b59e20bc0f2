import QtQuick
import QtQuick.Templates as T
import QtQuick.Window
import Orvel.Controls

// A button with a text; the prominent one is what most people want.
T.Button {
    id: button

    property bool isProminent: false

    implicitWidth: Math.max(64, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: 28
    leftPadding: 12
    rightPadding: 12
    focusPolicy: Qt.TabFocus
    hoverEnabled: true

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: if (enabled) clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    background: Rectangle {
        radius: Theme.controlRadius
        color: button.isProminent ? Theme.accentSurface : Theme.surfaceRaised
        border.width: button.isProminent ? 0 : Theme.hairline(Screen.devicePixelRatio)
        border.color: Theme.strokeStrong

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: button.down ? Theme.pressed : button.hovered ? Theme.hover : "transparent"
        }
        FocusRing { shown: button.visualFocus }
    }
    contentItem: PlainText {
        text: button.text
        size: Theme.bodySize
        color: button.isProminent ? Theme.textOnAccent : Theme.text
        horizontalAlignment: Text.AlignHCenter
    }
}
