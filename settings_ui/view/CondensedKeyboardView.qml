pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window
import Orvel.Controls
import Orvel.Settings

// The bottom row of a keyboard, to choose what each modifier acts as and how to delete forward.
VisualEffectView {
    id: board

    required property SettingsViewModel vm

    readonly property real inset: 10
    readonly property real keyGap: 3

    implicitHeight: keyRow.y + keyRow.height + inset
    radius: Theme.cardRadius
    material: VisualEffectView.Keyboard
    border.width: Theme.isDark ? Theme.hairline(Screen.devicePixelRatio) : 0
    border.color: Theme.stroke

    PlainText {
        id: heading

        x: board.inset
        y: 8
        height: Theme.smallestTarget - 4
        text: board.vm.section
        size: Theme.bodySize
        font.weight: Font.DemiBold
        color: Theme.keyText
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    Row {
        id: deleteRow

        anchors.right: parent.right
        anchors.rightMargin: board.inset
        y: heading.y + heading.height + 2
        anchors.left: parent.left
        anchors.leftMargin: board.inset
        height: Theme.smallestTarget
        spacing: 4

        PlainText {
            anchors.verticalCenter: parent.verticalCenter
            text: board.vm.deleteLabel
            size: 10
            color: Theme.keyLabel
        }
        KeyboardMenuButton {
            objectName: "strategyMenu"
            spokenName: board.vm.deleteLabel
            text: choices[current]
            choices: board.vm.strategyMenu
            current: board.vm.strategy
            onChosen: choice => board.vm.setStrategy(choice)
        }
        KeyboardMenuButton {
            objectName: "comboMenu"
            visible: board.vm.isCombo
            spokenName: board.vm.deleteLabel
            text: choices[current]
            choices: board.vm.comboMenu
            current: board.vm.comboModifier
            onChosen: choice => board.vm.setComboModifier(choice)
        }
        KeyboardMenuButton {
            objectName: "sacrificeMenu"
            visible: !board.vm.isCombo
            spokenName: board.vm.deleteLabel
            text: board.vm.sacrificeLabel
            choices: board.vm.sacrificeMenu
            current: board.vm.sacrificeKey
            onChosen: choice => board.vm.setSacrificeKey(choice)
        }
    }
    Row {
        id: keyRow

        x: board.inset
        y: deleteRow.y + deleteRow.height + 6
        spacing: board.keyGap

        Repeater {
            id: keys

            model: board.vm.keys
            delegate: DrawnKey { vm: board.vm }
        }
        DynamicDeleteKeyView {
            objectName: "deleteKey"
            width: board.width - 2 * board.inset - x
            isOn: board.vm.isEjectOn
            isCombo: board.vm.isCombo
            comboMod: board.vm.comboLabel
            singleKey: board.vm.sacrificeLabel
            spokenFace: board.vm.deleteKeyFace
        }
    }
}
