import QtQuick
import QtQuick.Templates as T
import Orvel.Controls

// A switch: a capsule with a knob that springs from side to side. It only asks to be turned; the
// setting decides what shows.
T.CheckBox {
    id: control

    property bool isOn: false
    property real trackWidth: 28
    property real trackHeight: 16
    // Of the knob, from 0 (off) to 1 (on); beyond both while it swings.
    readonly property real position: (contentItem as SwitchTrack).position

    signal toggleRequested(bool value)

    implicitWidth: Math.max(trackWidth, Theme.smallestTarget)
    implicitHeight: Math.max(trackHeight, Theme.smallestTarget)
    focusPolicy: Qt.TabFocus
    hoverEnabled: true

    checked: isOn
    // The click alone changes nothing.
    nextCheckState: () => control.checkState

    Accessible.name: text
    Accessible.onPressAction: control.clicked()
    Accessible.onToggleAction: control.clicked()
    Keys.onReturnPressed: control.clicked()
    Keys.onEnterPressed: control.clicked()

    onClicked: control.toggleRequested(!control.isOn)

    contentItem: SwitchTrack {
        isOn: control.isOn
        isDown: control.down
        isHovered: control.hovered
        isFocused: control.visualFocus
        trackWidth: control.trackWidth
        trackHeight: control.trackHeight
    }
}
