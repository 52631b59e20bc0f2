import QtQuick
import Orvel.Controls

// A plain key face.
KeyFace {
    id: key

    property string label

    Accessible.role: Accessible.StaticText
    Accessible.name: label

    PlainText {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 4
        text: key.label
        size: Theme.smallSize
        color: Theme.keyTextSoft
    }
}
