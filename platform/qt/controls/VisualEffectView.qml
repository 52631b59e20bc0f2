import QtQuick
import Orvel.Controls

// The translucent material of a surface, opaque where the screen cannot show what lies behind.
Rectangle {
    enum Material { Panel, Raised, Keyboard }

    property int material: VisualEffectView.Panel

    color: material === VisualEffectView.Raised ? Theme.surfaceRaised
         : material === VisualEffectView.Keyboard ? Theme.keyboard
         : Theme.surface
}
