pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Orvel.Controls
import Orvel.Settings

// The fifteen cards, three in a row; cards of one row are equally high.
Flickable {
    id: view

    required property SettingsViewModel vm

    readonly property int columns: 3

    contentWidth: width
    contentHeight: grid.implicitHeight + 2 * Theme.innerGap
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    T.ScrollBar.vertical: SlimScrollBar { visible: view.contentHeight > view.height }

    // Keyboards see the card that has the focus.
    function reveal(card: Item): void {
        const top = card.y + grid.y - Theme.innerGap
        const bottom = card.y + grid.y + card.height + Theme.innerGap
        if (top < contentY) contentY = Math.max(0, top)
        else if (bottom > contentY + height) contentY = bottom - height
    }
    // The card at that place of the grid, null where there is none.
    function cardAt(place: int): FeatureCardView {
        const card = place < specialCards.count ? specialCards.itemAt(place)
                                                : cards.itemAt(place - specialCards.count)
        return card as FeatureCardView
    }
    function moveFocus(place: int): void {
        const card = cardAt(place)
        if (card !== null) card.toggle.forceActiveFocus(Qt.TabFocusReason)
    }

    GridLayout {
        id: grid

        x: (view.width - width) / 2
        y: Theme.innerGap
        columns: view.columns
        columnSpacing: 8
        rowSpacing: 8

        Repeater {
            id: specialCards

            model: view.vm.specialCards
            delegate: SpecialFeatureCardView {
                required property int index

                objectName: "card." + index
                place: index
                changedMaps: index === 0 ? view.vm.changedMaps : []
                Layout.preferredWidth: 100
                Layout.fillHeight: true
                onToggleRequested: value => view.vm.setCard(place, value)
                onFocused: view.reveal(this)
                onMoveRequested: step => view.moveFocus(place + step)
            }
        }
        Repeater {
            id: cards

            model: view.vm.cards
            delegate: FeatureCardView {
                required property int index

                objectName: "card." + place
                place: index + specialCards.count
                Layout.preferredWidth: 100
                Layout.fillHeight: true
                onToggleRequested: value => view.vm.setCard(place, value)
                onFocused: view.reveal(this)
                onMoveRequested: step => view.moveFocus(place + step)
            }
        }
    }
}
