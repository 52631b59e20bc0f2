import QtQuick
import Orvel.Controls

// Text as the system writes it.
Text {
    property int size: Theme.bodySize

    font.family: Theme.fontFamily
    font.pixelSize: size
    color: Theme.text
    textFormat: Text.PlainText
    verticalAlignment: Text.AlignVCenter
}
