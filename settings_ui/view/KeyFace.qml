import QtQuick
import Orvel.Controls

// The cap of a drawn key.
Rectangle {
    id: face

    property bool isHovered: false
    property bool isDown: false
    property bool isHighlighted: false

    implicitHeight: 44
    radius: Theme.keyRadius
    color: isDown ? Theme.keyFacePressed : isHovered ? Theme.keyFaceHover : Theme.keyFace
    border.width: isHighlighted ? 1.5 : 1
    border.color: isHighlighted ? Theme.keyRemapped : Theme.keyStroke

    Behavior on border.color { ColorAnimation { duration: Theme.feedbackTime } }
}
