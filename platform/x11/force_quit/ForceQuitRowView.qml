import QtQuick
import Orvel.Controls

// One running application.
Rectangle {
    id: row

    required property string name
    required property string iconSource
    required property int pid
    property bool isChosen: false

    signal chosen
    signal opened

    height: 36
    radius: Theme.controlRadius
    color: isChosen ? Theme.accentSurface : mouse.containsMouse ? Theme.hover : "transparent"

    Accessible.role: Accessible.ListItem
    Accessible.name: name
    Accessible.selectable: true
    Accessible.selected: isChosen
    Accessible.onPressAction: row.chosen()

    Image {
        id: icon

        x: Theme.innerGap
        width: 24
        height: 24
        anchors.verticalCenter: parent.verticalCenter
        source: row.iconSource
        sourceSize.width: 24
        sourceSize.height: 24
        fillMode: Image.PreserveAspectFit
    }
    PlainText {
        anchors.left: icon.right
        anchors.leftMargin: Theme.innerGap
        anchors.right: parent.right
        anchors.rightMargin: Theme.innerGap
        anchors.verticalCenter: parent.verticalCenter
        size: Theme.titleSize
        elide: Text.ElideRight
        color: row.isChosen ? Theme.textOnAccent : Theme.text
        text: row.name
    }
    MouseArea {
        id: mouse

        anchors.fill: parent
        hoverEnabled: true
        onPressed: row.chosen()
        onDoubleClicked: row.opened()
    }
}
