import QtQuick
import QtQuick.Templates as T
import Orvel.Controls

// A sentence that explains, beside the control that it explains. Any press outside closes it.
T.Popup {
    id: popover

    property string text

    width: 212
    height: implicitContentHeight + topPadding + bottomPadding
    margins: Theme.innerGap
    padding: 10
    focus: true
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent

    // The control that opened it gets the keyboard back as it had it.
    property int focusReason: Qt.OtherFocusReason

    onAboutToShow: {
        const opener = parent as T.Control
        focusReason = opener === null ? Qt.OtherFocusReason : opener.focusReason
    }
    onClosed: if (parent !== null) parent.forceActiveFocus(focusReason)

    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.feedbackTime }
    }
    exit: Transition {
        NumberAnimation { property: "opacity"; to: 0; duration: Theme.feedbackTime / 2 }
    }
    background: GlassBackground {
        material: VisualEffectView.Raised
        radius: Theme.cardRadius
        border.color: Theme.floatingStroke

        FloatingShadow {}
    }
    contentItem: Sentence {
        room: popover.availableWidth
        text: popover.text
    }

    // A popup gives its content the whole width, which the text may not want.
    component Sentence: Item {
        property alias room: words.room
        property alias text: words.text

        implicitHeight: words.implicitHeight

        TidyText {
            id: words

            objectName: "sentence"
            size: 10
            lineHeight: 15
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
}
