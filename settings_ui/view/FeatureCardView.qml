import QtQuick
import QtQuick.Window
import Orvel.Controls

// One feature as a tile: symbol, title, text and switch.
Rectangle {
    id: card

    required property string title
    required property string description
    required property string iconName
    required property bool isOn
    required property color cardColor
    // Its place in the grid.
    property int place: 0
    // What the card reads; the description, unless a kind of card writes it otherwise.
    property string shownText: description
    property bool isHovered: hover.hovered
    property int descriptionFormat: Text.PlainText
    // Controls beside the switch.
    property alias accessories: accessoryRow.data
    readonly property alias toggle: toggle

    signal toggleRequested(bool value)
    signal focused()
    // Arrows ask for the neighbour that many places on.
    signal moveRequested(int step)

    readonly property real inset: 8

    implicitWidth: 100
    implicitHeight: titleText.y + titleText.height + 4 + descriptionText.implicitHeight + inset
    radius: Theme.cardRadius
    color: Theme.tint(cardColor, isHovered ? Theme.cardTintHovered : Theme.cardTint)
    border.width: Theme.hairline(Screen.devicePixelRatio)
    border.color: Theme.tint(cardColor, isHovered ? 0.7 : 0.42)

    Behavior on color { ColorAnimation { duration: Theme.feedbackTime } }

    Accessible.role: Accessible.Grouping
    Accessible.name: title
    Accessible.description: description

    Keys.onLeftPressed: moveRequested(-1)
    Keys.onRightPressed: moveRequested(1)
    Keys.onUpPressed: moveRequested(-3)
    Keys.onDownPressed: moveRequested(3)

    HoverHandler { id: hover }

    SymbolIcon {
        x: card.inset
        y: card.inset + 1
        width: 18
        height: 18
        name: card.iconName
        color: Theme.ink(card.cardColor)
    }
    Row {
        id: accessoryRow

        anchors.right: toggle.left
        anchors.rightMargin: 2
        y: toggle.y
    }
    BlueSwitchStyle {
        id: toggle

        anchors.right: parent.right
        anchors.rightMargin: card.inset
        y: card.inset + 10 - height / 2
        text: card.title
        isOn: card.isOn
        onToggleRequested: value => card.toggleRequested(value)
        onActiveFocusChanged: if (activeFocus) card.focused()
    }
    PlainText {
        id: titleText

        x: card.inset
        y: 34
        width: card.width - 2 * card.inset
        text: card.title
        size: Theme.cardTitleSize
        font.weight: Font.DemiBold
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: Theme.cardTitleSize - 1
        elide: Text.ElideRight
    }
    TidyText {
        id: descriptionText

        x: card.inset
        y: titleText.y + titleText.height + 4
        room: card.width - 2 * card.inset + 2
        text: card.shownText
        textFormat: card.descriptionFormat
        size: Theme.smallSize
        color: Theme.textSoft
    }
}
