pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import QtQuick.Window
import Orvel.Controls
import Orvel.ForceQuit

// The running applications, one of them chosen, and the question before it is ended.
Rectangle {
    id: view

    required property ForceQuitViewModel vm

    implicitWidth: 380
    implicitHeight: 400
    color: Theme.isDark ? "#1e1e21" : "#f6f6f8"

    Accessible.role: Accessible.Pane
    Accessible.name: "强制退出应用程序"
    Keys.onEscapePressed: view.vm.escape()
    Keys.onUpPressed: view.vm.moveChoice(-1)
    Keys.onDownPressed: view.vm.moveChoice(1)
    Keys.onReturnPressed: view.vm.askToQuit()
    Keys.onEnterPressed: view.vm.askToQuit()

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: Theme.panelPadding
        spacing: Theme.groupGap
        enabled: !view.vm.isAsking
        opacity: enabled ? 1 : 0.4

        PlainText {
            Layout.fillWidth: true
            wrapMode: Text.Wrap
            size: Theme.titleSize
            lineHeight: 1.25
            text: "如果某个应用程序有一段时间没有响应，请选择它的名称，然后点按“强制退出”。"
        }
        Rectangle {
            Layout.fillWidth: true
            Layout.fillHeight: true
            radius: Theme.cardRadius
            color: Theme.surfaceRaised
            border.width: Theme.hairline(Screen.devicePixelRatio)
            border.color: Theme.strokeStrong

            ListView {
                id: list

                anchors.fill: parent
                anchors.margins: 4
                clip: true
                boundsBehavior: Flickable.StopAtBounds
                model: view.vm.applications
                currentIndex: view.vm.chosenPlace
                highlightMoveDuration: 0
                T.ScrollBar.vertical: SlimScrollBar { visible: list.contentHeight > list.height }
                Accessible.role: Accessible.List
                Accessible.name: "正在运行的应用程序"
                delegate: ForceQuitRowView {
                    id: entry

                    width: list.width
                    isChosen: ListView.isCurrentItem
                    onChosen: view.vm.choose(entry.pid)
                    onOpened: view.vm.askToQuit()
                }
            }
            PlainText {
                anchors.centerIn: parent
                visible: list.count === 0
                color: Theme.textSoft
                text: "没有可以强制退出的应用程序"
            }
        }
        RowLayout {
            Layout.fillWidth: true
            spacing: Theme.innerGap

            PlainText {
                Layout.fillWidth: true
                wrapMode: Text.Wrap
                color: Theme.textSoft
                text: "按 Esc 键可关闭此窗口。"
            }
            PushButton {
                objectName: "quit"
                text: "强制退出"
                isProminent: true
                enabled: view.vm.hasChoice && !view.vm.isAsking
                // Behind the question there is nothing to press, which nothing else would tell.
                Accessible.ignored: view.vm.isAsking
                opacity: view.vm.hasChoice ? 1 : 0.5
                onClicked: view.vm.askToQuit()
            }
        }
    }
    ForceQuitQuestion {
        anchors.centerIn: parent
        width: parent.width - 64
        visible: view.vm.isAsking
        vm: view.vm
        onVisibleChanged: if (!visible) view.forceActiveFocus()
    }
}
