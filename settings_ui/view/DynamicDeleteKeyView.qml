import QtQuick
import Orvel.Controls

// The Delete key: an ordinary one, or what forward delete is made with.
KeyFace {
    id: key

    property bool isOn: false
    property bool isCombo: true
    property string comboMod
    property string singleKey
    property string spokenFace

    isHighlighted: isOn

    Accessible.role: Accessible.StaticText
    Accessible.name: "delete " + spokenFace

    component Fading: Item {
        property bool shown: false

        anchors.fill: parent
        visible: opacity > 0
        opacity: shown ? 1 : 0

        Behavior on opacity { NumberAnimation { duration: Theme.feedbackTime } }
    }

    component DeleteKeyText: PlainText {
        anchors.horizontalCenter: parent?.horizontalCenter
        y: 6
        width: Math.min(implicitWidth, (parent?.width ?? 0) - 6)
        size: Theme.smallSize
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: Theme.smallSize - 1
        elide: Text.ElideRight
        font.weight: Font.DemiBold
        color: Theme.keyRemappedText
    }

    Fading {
        shown: !key.isOn

        SymbolIcon {
            anchors.horizontalCenter: parent.horizontalCenter
            y: 7
            width: 13
            height: 13
            name: "delete.left"
            color: Theme.keyText
        }
        PlainText {
            anchors.horizontalCenter: parent.horizontalCenter
            anchors.bottom: parent.bottom
            anchors.bottomMargin: 4
            text: "delete"
            size: Theme.smallSize
            color: Theme.keyTextSoft
        }
    }
    Fading {
        shown: key.isOn && key.isCombo

        DeleteKeyText { text: key.comboMod + " +" }
        SymbolIcon {
            anchors.horizontalCenter: parent.horizontalCenter
            anchors.bottom: parent.bottom
            anchors.bottomMargin: 7
            width: 13
            height: 12
            name: "delete.left"
            color: Theme.keyRemappedText
        }
    }
    Fading {
        shown: key.isOn && !key.isCombo

        DeleteKeyText { text: key.singleKey }
        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            anchors.bottom: parent.bottom
            anchors.bottomMargin: 7
            spacing: 4

            SymbolIcon {
                width: 10
                height: 12
                name: "arrow.right"
                color: Theme.keyRemappedText
            }
            SymbolIcon {
                width: 13
                height: 12
                name: "delete.forward"
                color: Theme.keyRemappedText
            }
        }
    }
}
