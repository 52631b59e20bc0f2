pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import QtQuick.Window
import Orvel.Controls

// A menu of choices inside a panel. Arrows move, Return and Space choose, Esc leaves.
T.Menu {
    id: menu

    property list<string> choices
    // The choice that holds now; -1 for none.
    property int current: -1
    property int textSize: Theme.smallSize

    signal chosen(int index)

    implicitWidth: Math.max(96, contentItem.implicitWidth + leftPadding + rightPadding)
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    margins: Theme.grid
    padding: Theme.grid
    overlap: 0
    modal: false
    focus: true
    // A press on the control that opened it is that control's own.
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent
    delegate: ChoiceMenuItem {}

    // The control that opened it gets the keyboard back as it had it.
    property int focusReason: Qt.OtherFocusReason

    onAboutToShow: {
        const opener = parent as T.Control
        focusReason = opener === null ? Qt.OtherFocusReason : opener.focusReason
    }
    onOpened: currentIndex = Math.max(0, current)
    onClosed: if (parent !== null) parent.forceActiveFocus(focusReason)

    background: GlassBackground {
        material: VisualEffectView.Raised
        radius: Theme.cardRadius
        border.color: Theme.floatingStroke

        FloatingShadow {}
    }
    contentItem: ListView {
        implicitHeight: contentHeight
        implicitWidth: {
            let widest = 0
            for (let i = 0; i < menu.count; ++i) {
                widest = Math.max(widest, menu.itemAt(i).implicitWidth)
            }
            return widest
        }
        model: menu.contentModel
        interactive: false
        currentIndex: menu.currentIndex
    }

    Instantiator {
        model: menu.choices
        delegate: ChoiceMenuItem {
            required property int index
            required property string modelData

            text: modelData
            textSize: menu.textSize
            isCurrent: index === menu.current
            onTriggered: menu.chosen(index)
        }
        onObjectAdded: (index, object) => menu.insertItem(index, object)
        onObjectRemoved: (index, object) => menu.removeItem(object)
    }
}
