import QtQuick
import QtQuick.Templates as T
import Orvel.Controls

// One choice of a menu; a mark tells the one that holds now.
T.MenuItem {
    id: item

    property bool isCurrent: false
    property int textSize: Theme.smallSize

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Theme.smallestTarget
    leftPadding: 22
    rightPadding: 12
    hoverEnabled: true

    Accessible.role: Accessible.MenuItem
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: isCurrent

    background: Rectangle {
        radius: Theme.controlRadius - 2
        color: item.down ? Qt.darker(Theme.accentSurface, 1.15)
             : item.highlighted ? Theme.accentSurface : "transparent"

        SymbolIcon {
            x: 6
            anchors.verticalCenter: parent.verticalCenter
            width: 11
            height: 11
            visible: item.isCurrent
            name: "checkmark"
            color: item.highlighted ? Theme.textOnAccent : Theme.text
        }
    }
    contentItem: PlainText {
        text: item.text
        size: item.textSize
        color: item.highlighted ? Theme.textOnAccent : Theme.text
    }
}
