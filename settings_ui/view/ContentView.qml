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

    onIsOnScreenChanged: {
        vm.isShown = isOnScreen
        if (isOnScreen) arrival.restart()
    }
    Component.onCompleted: vm.isShown = isOnScreen
    Keys.onEscapePressed: vm.close()

    NumberAnimation {
        id: arrival

        target: content.Window.window
        property: "opacity"
        from: 0
        to: 1
        duration: Theme.arrivalTime
        easing.type: Easing.OutCubic
    }
    Connections {
        target: Theme
        function onIsStillChanged(): void { if (Theme.isStill) arrival.complete() }
    }
    PopoverShape {
        id: shape

        anchors.fill: parent
        isArrowVisible: content.isBelowStatusItem
    }
    OnboardingPage {
        anchors.fill: parent
        anchors.topMargin: shape.arrowHeight
        visible: content.vm.onboarding.isNeeded
        vm: content.vm.onboarding
    }
    PanelHeader {
        id: header

        visible: !content.vm.onboarding.isNeeded

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: Theme.panelPadding + 1
        anchors.rightMargin: Theme.panelPadding + 1
        y: shape.arrowHeight + Theme.panelPadding - 3
        vm: content.vm
    }
    CondensedKeyboardView {
        id: keyboard

        visible: header.visible

        anchors.left: header.left
        anchors.right: header.right
        y: header.y + header.height + Theme.groupGap
        vm: content.vm
    }
    FeatureGrid {
        id: cards

        objectName: "cards"
        visible: header.visible

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: keyboard.bottom
        anchors.topMargin: Theme.grid
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 1
        vm: content.vm
    }
    // More cards lie below the edge.
    Rectangle {
        anchors.left: header.left
        anchors.right: header.right
        anchors.bottom: cards.bottom
        height: 24
        visible: cards.visible && cards.contentY + cards.height < cards.contentHeight - 1
        gradient: Gradient {
            GradientStop { position: 0; color: Qt.alpha(Theme.surface, 0) }
            GradientStop { position: 1; color: Theme.surface }
        }
    }
    // Where the cards pass below the keyboard.
    Rectangle {
        anchors.top: cards.top
        width: parent.width
        height: Theme.hairline(Screen.devicePixelRatio)
        visible: cards.visible && cards.contentY > 0
        color: Theme.stroke
    }
}
