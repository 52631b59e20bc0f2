import QtQuick
import Orvel.Controls

// Shows keyboards where they are; the pointer never sees it.
Rectangle {
    id: ring

    property bool shown: false
    property real cornerRadius: Theme.controlRadius
    property real gap: 2

    anchors.fill: parent
    anchors.margins: -gap
    visible: shown
    color: "transparent"
    radius: cornerRadius + gap
    border.width: Theme.focusWidth
    border.color: Theme.focus
}
