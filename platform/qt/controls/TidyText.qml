import QtQuick
import Orvel.Controls

// Text in several lines that never leaves one character, or one and a full stop, alone on the last.
PlainText {
    id: label

    property real room: 0
    property real lastLineWidth: 0
    property bool isNarrowed: false

    width: isNarrowed ? room - size : room
    lineHeightMode: Text.FixedHeight
    lineHeight: Math.ceil(size * Theme.smallLineHeight)
    wrapMode: Text.Wrap
    verticalAlignment: Text.AlignTop

    onTextChanged: isNarrowed = false
    onLineLaidOut: line => {
        if (!line.isLast) return
        lastLineWidth = line.implicitWidth
        laidOut.restart()
    }

    // A line must not change the width that it is laid out in, so the check comes after all lines.
    Timer {
        id: laidOut

        interval: 0
        onTriggered: {
            if (label.lineCount > 1 && label.lastLineWidth <= label.size * 2.2) {
                label.isNarrowed = true
            }
        }
    }
}
