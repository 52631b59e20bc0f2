import QtQuick
import QtQuick.Templates as T
import Orvel.Controls

// A scroll bar that takes no room.
T.ScrollBar {
    id: bar

    implicitWidth: 8
    padding: 2
    minimumSize: 0.1

    contentItem: Rectangle {
        implicitWidth: 4
        radius: 2
        color: bar.pressed || bar.hovered ? Theme.textSoft : Theme.strokeStrong
    }
}
