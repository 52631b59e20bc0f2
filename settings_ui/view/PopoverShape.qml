import QtQuick
import QtQuick.Shapes
import QtQuick.Window
import Orvel.Controls

// The panel's background: a rounded rectangle with an arrow on the middle of its top edge, one
// closed path with one hairline along it.
Shape {
    id: shape

    property real arrowWidth: 22
    property real arrowHeight: 10
    property real cornerRadius: Theme.panelRadius
    property bool isArrowVisible: true

    readonly property real lineWidth: Theme.hairline(Screen.devicePixelRatio)
    readonly property real inset: lineWidth / 2
    readonly property real topEdge: arrowHeight + inset
    readonly property real leftEdge: inset
    readonly property real rightEdge: width - inset
    readonly property real bottomEdge: height - inset
    readonly property real middle: width / 2
    readonly property real tip: isArrowVisible ? inset : topEdge

    ShapePath {
        fillColor: Theme.surface
        strokeColor: Theme.stroke
        strokeWidth: shape.lineWidth
        joinStyle: ShapePath.RoundJoin

        startX: shape.middle - shape.arrowWidth / 2
        startY: shape.topEdge
        PathLine { x: shape.middle; y: shape.tip }
        PathLine { x: shape.middle + shape.arrowWidth / 2; y: shape.topEdge }
        PathLine { x: shape.rightEdge - shape.cornerRadius; y: shape.topEdge }
        PathArc {
            x: shape.rightEdge; y: shape.topEdge + shape.cornerRadius
            radiusX: shape.cornerRadius; radiusY: shape.cornerRadius
        }
        PathLine { x: shape.rightEdge; y: shape.bottomEdge - shape.cornerRadius }
        PathArc {
            x: shape.rightEdge - shape.cornerRadius; y: shape.bottomEdge
            radiusX: shape.cornerRadius; radiusY: shape.cornerRadius
        }
        PathLine { x: shape.leftEdge + shape.cornerRadius; y: shape.bottomEdge }
        PathArc {
            x: shape.leftEdge; y: shape.bottomEdge - shape.cornerRadius
            radiusX: shape.cornerRadius; radiusY: shape.cornerRadius
        }
        PathLine { x: shape.leftEdge; y: shape.topEdge + shape.cornerRadius }
        PathArc {
            x: shape.leftEdge + shape.cornerRadius; y: shape.topEdge
            radiusX: shape.cornerRadius; radiusY: shape.cornerRadius
        }
        PathLine { x: shape.middle - shape.arrowWidth / 2; y: shape.topEdge }
    }
}
