import QtQuick
import Orvel.Controls

// A feature whose text follows the settings, with a sentence of help behind its info button.
FeatureCardView {
    id: card

    required property string helpText
    // Label and target of changed keys, one after the other; empty while there is nothing to list.
    property list<string> changedMaps
    property bool showInfo: help.visible

    descriptionFormat: changedMaps.length > 0 ? Text.StyledText : Text.PlainText
    shownText: changedMaps.length > 0 ? listedMaps() : description

    function listedMaps(): string {
        const joiner = "\u2060"  // An entry never breaks in the middle.
        const entries = []
        for (let i = 0; i + 1 < changedMaps.length; i += 2) {
            entries.push(Array.from(changedMaps[i]).join(joiner) + joiner + "→" + joiner
                         + "<b><font color=\"" + Theme.danger + "\">" + changedMaps[i + 1]
                         + "</font></b>")
        }
        return entries.join("&nbsp; ")
    }

    accessories: IconButton {
        id: info

        objectName: card.objectName.replace("card", "info")
        text: card.title + " 说明"
        symbol: "info.circle.fill"
        symbolSize: 13
        onClicked: help.visible ? help.close() : help.open()

        Popover {
            id: help

            y: info.height + 2
            x: -width / 2 + info.width / 2
            text: card.helpText
        }
    }
}
