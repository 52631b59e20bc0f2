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

    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.feedbackTime }
    }
    exit: Transition {
        NumberAnimation { property: "opacity"; to: 0; duration: Theme.feedbackTime / 2 }
    }
    background: GlassBackground {
        material: VisualEffectView.Raised
        radius: Theme.cardRadius
        border.color: Theme.isDark ? Theme.strokeStrong : Theme.stroke

        FloatingShadow {}
    }
    contentItem: TidyText {
        room: popover.availableWidth
        text: popover.text
        size: 10
        lineHeight: 15
        Accessible.role: Accessible.StaticText
        Accessible.name: popover.text
    }
}
