import QtQuick
import QtQuick.Templates as T
import Orvel.Controls

// A symbol to press. `text` is its name for people who do not see it.
T.AbstractButton {
    id: button

    property string symbol
    property real symbolSize: 14
    property color symbolColor: Theme.textSoft

    implicitWidth: Theme.smallestTarget
    implicitHeight: Theme.smallestTarget
    focusPolicy: Qt.TabFocus
    hoverEnabled: true

    Accessible.role: Accessible.Button
    Accessible.name: text
    Keys.onReturnPressed: button.clicked()
    Keys.onEnterPressed: button.clicked()

    background: Rectangle {
        radius: Theme.controlRadius
        color: button.down ? Theme.pressed : button.hovered ? Theme.hover : "transparent"

        FocusRing {
            shown: button.visualFocus
            gap: 0
        }
    }
    contentItem: Item {
        SymbolIcon {
            anchors.centerIn: parent
            width: button.symbolSize
            height: button.symbolSize
            name: button.symbol
            color: button.enabled ? button.symbolColor : Theme.strokeStrong
        }
    }
}
