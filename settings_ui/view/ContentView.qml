import QtQuick
import QtQuick.Window
import Orvel.Controls
import Orvel.Settings

// The settings panel: header and keyboard stand still, the cards scroll.
FocusScope {
    id: content

    required property SettingsViewModel vm
    // False where the panel cannot hang below the status item.
    property bool isBelowStatusItem: true

    readonly property bool isOnScreen: Window.window !== null && Window.window.visible

    implicitWidth: 350
    implicitHeight: 550
    focus: true

    onIsOnScreenChanged: vm.isShown = isOnScreen
    Component.onCompleted: vm.isShown = isOnScreen
    Keys.onEscapePressed: vm.close()

    PopoverShape {
        id: shape

        anchors.fill: parent
        isArrowVisible: content.isBelowStatusItem
    }
    PanelHeader {
        id: header

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: Theme.panelPadding + 1
        anchors.rightMargin: Theme.panelPadding + 1
        y: shape.arrowHeight + Theme.panelPadding - 3
        vm: content.vm
    }
    CondensedKeyboardView {
        id: keyboard

        anchors.left: header.left
        anchors.right: header.right
        y: header.y + header.height + Theme.groupGap
        vm: content.vm
    }
    FeatureGrid {
        id: cards

        objectName: "cards"

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: keyboard.bottom
        anchors.topMargin: Theme.grid
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 1
        vm: content.vm
    }
    // Where the cards pass below the keyboard.
    Rectangle {
        anchors.top: cards.top
        width: parent.width
        height: Theme.hairline(Screen.devicePixelRatio)
        visible: cards.contentY > 0
        color: Theme.stroke
    }
}
