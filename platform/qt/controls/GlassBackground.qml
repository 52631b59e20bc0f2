import QtQuick
import QtQuick.Window
import Orvel.Controls

// A surface that floats: the material and one hairline inside its edge.
VisualEffectView {
    radius: Theme.panelRadius
    border.width: Theme.hairline(Screen.devicePixelRatio)
    border.color: Theme.stroke
}
