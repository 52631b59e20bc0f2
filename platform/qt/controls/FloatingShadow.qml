import QtQuick

// The soft shadow of a surface that floats inside a panel; it lies below its parent.
BorderImage {
    z: -1
    anchors.fill: parent
    anchors.margins: -16
    source: "qrc:/orvel/shadow/shadow.png"
    border { left: 30; right: 30; top: 30; bottom: 30 }
}
