import QtQuick
import Orvel.Settings

// One key of the row, shown as the kind of key that it is.
Item {
    id: key

    required property SettingsViewModel vm
    required property int index
    required property string label
    required property string symbol
    required property string spokenName
    required property bool isRemappable
    required property bool isRemapped
    required property string target
    required property int targetIndex

    readonly property bool isMini: !isRemappable && symbol !== ""
    readonly property bool isPlain: !isRemappable && symbol === ""

    width: isRemappable ? 32 : isMini ? 25 : 38
    height: 44

    RemappableKeyView {
        objectName: "key." + key.spokenName
        anchors.fill: parent
        visible: key.isRemappable
        physicalName: key.label
        physicalIcon: key.symbol
        spokenName: key.spokenName
        mappedTarget: key.target
        mappedIndex: key.targetIndex
        isRemapped: key.isRemapped
        choices: key.isRemappable ? key.vm.mapMenu : []
        onTargetChosen: choice => key.vm.setMap(key.index, choice)
    }
    StaticMiniKey {
        anchors.fill: parent
        visible: key.isMini
        label: key.label
        symbol: key.symbol
    }
    StaticKeyView {
        anchors.fill: parent
        visible: key.isPlain
        label: key.label
    }
}
