import QtQuick
import QtQuick.Templates as T
import Orvel.Controls

// A modifier key: shows what it acts as, and lets the user choose it from a menu.
T.AbstractButton {
    id: key

    property string physicalName
    property string physicalIcon
    property string spokenName: physicalName
    property string mappedTarget
    property int mappedIndex: -1
    property bool isRemapped: false
    property list<string> choices
    readonly property alias menu: menu

    signal targetChosen(int choice)

    implicitHeight: 44
    focusPolicy: Qt.TabFocus
    hoverEnabled: true

    // A button says that it is a plain one whenever somebody starts to listen.
    Accessible.role: Accessible.ButtonMenu
    Accessible.onRoleChanged: Accessible.role = Accessible.ButtonMenu
    Accessible.name: isRemapped ? spokenName + "，" + choices[mappedIndex] : spokenName
    Keys.onReturnPressed: key.clicked()
    Keys.onEnterPressed: key.clicked()

    onClicked: menu.opened ? menu.close() : menu.open()

    background: KeyFace {
        isHovered: key.hovered
        isDown: key.down || menu.opened
        isHighlighted: key.isRemapped

        FocusRing {
            shown: key.visualFocus
            cornerRadius: Theme.keyRadius
            gap: 1
            border.color: Theme.keyFocus
        }
    }
    contentItem: Item {
        SymbolIcon {
            anchors.horizontalCenter: parent.horizontalCenter
            y: key.isRemapped ? 4 : 7
            width: 11
            height: 11
            name: key.physicalIcon
            color: key.isRemapped ? Theme.keyTextSoft : Theme.keyText
        }
        PlainText {
            anchors.horizontalCenter: parent.horizontalCenter
            y: key.isRemapped ? 15 : parent.height - height - 4
            text: key.physicalName
            size: Theme.smallSize
            color: Theme.keyTextSoft
        }
        PlainText {
            anchors.horizontalCenter: parent.horizontalCenter
            anchors.bottom: parent.bottom
            anchors.bottomMargin: 3
            visible: key.isRemapped
            text: key.mappedTarget
            size: Theme.cardTitleSize
            font.weight: Font.DemiBold
            color: Theme.keyRemappedText
        }
    }

    ChoiceMenu {
        id: menu

        y: key.height + 2
        choices: key.choices
        current: key.mappedIndex
        onChosen: choice => key.targetChosen(choice)
    }
}
