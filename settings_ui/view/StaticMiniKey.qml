import QtQuick
import Orvel.Controls

// A key with a symbol that cannot be remapped.
KeyFace {
    id: key

    property string label
    property string symbol

    Accessible.role: Accessible.StaticText
    Accessible.name: label

    SymbolIcon {
        anchors.horizontalCenter: parent.horizontalCenter
        y: 7
        width: 11
        height: 11
        name: key.symbol
        color: Theme.keyTextSoft
    }
    PlainText {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 4
        text: key.label
        size: Theme.smallSize
        color: Theme.keyTextSoft
    }
}
