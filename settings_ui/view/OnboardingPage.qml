pragma ComponentBehavior: Bound

import QtQuick
import Orvel.Controls
import Orvel.Settings

// What is missing, what stops without it and what to do; ticked as soon as it is there.
FocusScope {
    id: page

    required property OnboardingViewModel vm

    Rectangle {
        id: badge

        anchors.horizontalCenter: parent.horizontalCenter
        y: 44
        width: 52
        height: 52
        radius: Theme.panelRadius
        color: Theme.accentSurface

        SymbolIcon {
            anchors.centerIn: parent
            width: 34
            height: 34
            name: "MenuBarIcon"
            color: Theme.textOnAccent
        }
    }
    PlainText {
        id: title

        anchors.horizontalCenter: parent.horizontalCenter
        anchors.top: badge.bottom
        anchors.topMargin: Theme.groupGap
        text: page.vm.title
        size: Theme.titleSize
        font.weight: Font.DemiBold
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    PlainText {
        id: subtitle

        anchors.horizontalCenter: parent.horizontalCenter
        anchors.top: title.bottom
        anchors.topMargin: Theme.grid
        text: page.vm.subtitle
        color: Theme.textSoft
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    Column {
        id: findings

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: subtitle.bottom
        anchors.topMargin: 20
        anchors.leftMargin: Theme.panelPadding + 1
        anchors.rightMargin: Theme.panelPadding + 1
        spacing: Theme.innerGap

        Repeater {
            model: page.vm.findings
            delegate: FindingRow {
                required property int index

                objectName: "finding." + index
                width: findings.width
                thereText: page.vm.there
                settingsText: page.vm.openSettingsText
                onSettingsRequested: page.vm.openSettings(index)
            }
        }
    }
    Row {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Theme.panelPadding + 4
        spacing: Theme.innerGap
        visible: !page.vm.isComplete

        PushButton {
            objectName: "later"
            text: page.vm.laterText
            onClicked: page.vm.dismiss()
        }
        PushButton {
            objectName: "retry"
            text: page.vm.retryText
            isProminent: true
            onClicked: page.vm.retry()
        }
    }
}
