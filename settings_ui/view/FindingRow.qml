import QtQuick
import QtQuick.Window
import Orvel.Controls

// One essential thing: ticked when it is there, otherwise with what it stops and what to do.
Rectangle {
    id: row

    required property string name
    required property string symbol
    required property string stops
    required property string remedy
    required property bool isThere
    required property bool hasSettings
    property string thereText
    property string settingsText

    signal settingsRequested()

    readonly property int inset: 12

    implicitHeight: texts.y + texts.height + inset
    radius: Theme.cardRadius
    color: isThere ? Theme.tint(Theme.positive, 0.10) : Theme.surfaceRaised
    border.width: Theme.hairline(Screen.devicePixelRatio)
    border.color: isThere ? Theme.tint(Theme.positive, 0.4) : Theme.stroke

    Behavior on color { ColorAnimation { duration: Theme.feedbackTime } }

    Accessible.role: Accessible.StaticText
    Accessible.name: name + "，" + (isThere ? thereText : stops + remedy)

    Rectangle {
        id: tile

        x: row.inset
        y: row.inset
        width: 30
        height: 30
        radius: Theme.controlRadius
        color: Theme.tint(row.isThere ? Theme.positive : Theme.caution, Theme.isDark ? 0.3 : 0.2)

        SymbolIcon {
            anchors.centerIn: parent
            width: 18
            height: 18
            name: row.symbol
            color: row.isThere ? Theme.ink(Theme.positive) : Theme.warning
        }
    }
    Column {
        id: texts

        anchors.left: tile.right
        anchors.leftMargin: 10
        anchors.right: parent.right
        anchors.rightMargin: row.inset
        y: row.isThere ? row.inset : row.inset - 1
        spacing: 3

        PlainText {
            width: texts.width - mark.width - Theme.innerGap
            height: row.isThere ? tile.height : implicitHeight
            text: row.name
            size: Theme.bodySize
            font.weight: Font.DemiBold
        }
        TidyText {
            visible: !row.isThere
            room: texts.width
            text: row.stops
            size: 10
            color: Theme.textSoft
        }
        TidyText {
            visible: !row.isThere
            room: texts.width
            text: row.remedy
            size: 10
        }
        Item {
            visible: settings.visible
            width: 1
            height: 3
        }
        PushButton {
            id: settings

            objectName: "settings"
            visible: !row.isThere && row.hasSettings
            text: row.settingsText
            onClicked: row.settingsRequested()
        }
    }
    Row {
        id: mark

        anchors.right: parent.right
        anchors.rightMargin: row.inset
        y: row.isThere ? row.inset + (tile.height - height) / 2 : row.inset - 1
        spacing: Theme.grid

        PlainText {
            anchors.verticalCenter: parent.verticalCenter
            visible: row.isThere
            text: row.thereText
            size: 10
            color: Theme.ink(Theme.positive)
        }
        SymbolIcon {
            objectName: "mark"
            width: 16
            height: 16
            name: row.isThere ? "checkmark.circle.fill" : "exclamationmark.triangle.fill"
            color: row.isThere ? Theme.ink(Theme.positive) : Theme.warning
        }
    }
}
