import QtQuick
import Orvel.Controls
import Orvel.Settings

// Name, subtitle and master switch. While the engine is paused it says so in place of the
// subtitle, and one click lets it work again.
Item {
    id: header

    required property SettingsViewModel vm

    implicitHeight: 36

    Rectangle {
        id: badge

        width: 34
        height: 34
        anchors.verticalCenter: parent.verticalCenter
        radius: Theme.cardRadius
        color: header.vm.isPaused ? Theme.textSoft : Theme.accentSurface

        SymbolIcon {
            anchors.centerIn: parent
            width: 22
            height: 22
            name: header.vm.isPaused ? "MenuBarIcon.paused" : "MenuBarIcon"
            color: header.vm.isPaused ? Theme.surfaceRaised : Theme.textOnAccent
        }
    }
    PlainText {
        id: title

        anchors.left: badge.right
        anchors.leftMargin: 10
        y: header.vm.isPaused ? (header.height - height) / 2 : 1
        text: header.vm.title
        size: Theme.titleSize
        font.weight: Font.DemiBold
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    PlainText {
        anchors.left: title.left
        anchors.right: master.left
        anchors.rightMargin: 6
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 1
        visible: !header.vm.isPaused
        text: header.vm.subtitle
        size: 10
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: 9
        elide: Text.ElideRight
        color: Theme.textSoft
    }
    PauseBanner {
        objectName: "resume"
        anchors.left: title.right
        anchors.leftMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        visible: header.vm.isPaused
        onClicked: header.vm.resume()
    }
    BlueSwitchStyle {
        id: master

        objectName: "master"
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        trackWidth: 38
        trackHeight: 22
        text: "全部功能"
        isOn: header.vm.isAllOn
        onToggleRequested: value => header.vm.setMaster(value)
    }
}
