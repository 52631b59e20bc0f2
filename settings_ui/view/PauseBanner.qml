import QtQuick
import QtQuick.Templates as T
import QtQuick.Window
import Orvel.Controls

// Says that the engine is paused; a click ends the pause.
T.AbstractButton {
    id: banner

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: 26
    leftPadding: 10
    rightPadding: 12
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    text: "已暂停，点按恢复"

    Accessible.role: Accessible.Button
    Accessible.name: text
    Keys.onReturnPressed: banner.clicked()
    Keys.onEnterPressed: banner.clicked()

    background: Rectangle {
        radius: banner.height / 2
        color: Theme.tint(Theme.caution, banner.down ? Theme.buttonTintPressed
                                         : banner.hovered ? Theme.buttonTintHovered
                                         : Theme.buttonTint)
        border.width: Theme.hairline(Screen.devicePixelRatio)
        border.color: Theme.warning

        FocusRing {
            shown: banner.visualFocus
            cornerRadius: parent.radius
        }
    }
    contentItem: Row {
        spacing: Theme.iconGap

        SymbolIcon {
            anchors.verticalCenter: parent.verticalCenter
            width: 11
            height: 11
            name: "play.fill"
            color: Theme.warning
        }
        PlainText {
            anchors.verticalCenter: parent.verticalCenter
            text: banner.text
            size: Theme.bodySize
            font.weight: Font.DemiBold
            color: Theme.warning
        }
    }
}
