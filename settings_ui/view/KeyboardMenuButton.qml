import QtQuick
import QtQuick.Templates as T
import Orvel.Controls

// A small pop-up menu on the dark surface of the keyboard, labelled with its choice.
T.AbstractButton {
    id: button

    property string spokenName
    property list<string> choices
    property int current: 0
    readonly property alias menu: menu

    signal chosen(int choice)

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Theme.smallestTarget
    leftPadding: 8
    rightPadding: 6
    focusPolicy: Qt.TabFocus
    hoverEnabled: true

    // A button says that it is a plain one whenever somebody starts to listen.
    Accessible.role: Accessible.ButtonMenu
    Accessible.onRoleChanged: Accessible.role = Accessible.ButtonMenu
    Accessible.name: spokenName + " " + text
    Keys.onReturnPressed: button.clicked()
    Keys.onEnterPressed: button.clicked()

    onClicked: menu.opened ? menu.close() : menu.open()

    background: KeyFace {
        anchors.fill: parent
        anchors.topMargin: 2
        anchors.bottomMargin: 2
        isHovered: button.hovered
        isDown: button.down || menu.opened

        FocusRing {
            shown: button.visualFocus
            cornerRadius: Theme.keyRadius
            gap: 1
            border.color: Theme.keyFocus
        }
    }
    contentItem: Row {
        spacing: 3

        PlainText {
            anchors.verticalCenter: parent.verticalCenter
            text: button.text
            size: Theme.smallSize
            color: Theme.keyText
        }
        SymbolIcon {
            anchors.verticalCenter: parent.verticalCenter
            width: 9
            height: 9
            name: "chevron.up.chevron.down"
            color: Theme.keyTextSoft
        }
    }

    ChoiceMenu {
        id: menu

        y: button.height
        choices: button.choices
        current: button.current
        onChosen: choice => button.chosen(choice)
    }
}
