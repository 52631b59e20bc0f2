import QtQuick
import QtQuick.Layouts
import QtQuick.Window
import Orvel.Controls
import Orvel.ForceQuit

// What is asked before anything is lost.
FocusScope {
    id: question

    required property ForceQuitViewModel vm

    implicitHeight: content.implicitHeight + 2 * Theme.panelPadding
    onVisibleChanged: if (visible) forceActiveFocus()
    // A key that is still held from the list has not answered yet.
    Keys.onReturnPressed: event => { if (!event.isAutoRepeat) vm.confirm() }
    Keys.onEnterPressed: event => { if (!event.isAutoRepeat) vm.confirm() }
    Keys.onUpPressed: event => event.accepted = true
    Keys.onDownPressed: event => event.accepted = true

    Accessible.role: Accessible.Dialog
    Accessible.name: vm.question

    Rectangle {
        anchors.fill: parent
        radius: Theme.panelRadius
        color: Theme.surfaceRaised
        border.width: Theme.hairline(Screen.devicePixelRatio)
        border.color: Theme.strokeStrong
    }
    ColumnLayout {
        id: content

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        anchors.margins: Theme.panelPadding
        spacing: Theme.groupGap

        PlainText {
            Layout.fillWidth: true
            wrapMode: Text.Wrap
            size: Theme.titleSize
            font.weight: Font.DemiBold
            text: question.vm.question
        }
        PlainText {
            Layout.fillWidth: true
            wrapMode: Text.Wrap
            color: Theme.textSoft
            text: "未存储的更改将会丢失。"
        }
        RowLayout {
            Layout.alignment: Qt.AlignRight
            spacing: Theme.innerGap

            PushButton {
                objectName: "cancel"
                text: "取消"
                onClicked: question.vm.escape()
            }
            PushButton {
                objectName: "confirm"
                text: "强制退出"
                isProminent: true
                onClicked: question.vm.confirm()
            }
        }
    }
}
