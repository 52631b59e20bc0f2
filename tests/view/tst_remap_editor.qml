import QtQuick
import QtTest
import Orvel.Settings
import Orvel.Test

TestCase {
    id: test

    name: "RemapEditor"
    when: windowShown
    width: 350
    height: 550
    visible: true

    readonly property var targets: ["Ctrl", "Win", "Alt", "Cmd", "原按键"]
    readonly property var keys: [{tag: "map_ctrl", name: "key.ctrl"},
                                 {tag: "map_option", name: "key.opt"},
                                 {tag: "map_cmd", name: "key.cmd"},
                                 {tag: "map_right_cmd", name: "key.右cmd"},
                                 {tag: "map_right_option", name: "key.右opt"}]

    property TestStage stage
    property ContentView panel

    Component { id: stages; TestStage {} }
    Component { id: panels; ContentView { width: 350; height: 550 } }

    function init() {
        stage = stages.createObject(test)
        panel = panels.createObject(test, {vm: stage.viewModel})
        verify(panel !== null)
        waitForRendering(panel)
    }
    function cleanup() {
        panel.destroy()
        wait(0)
        stage.destroy()
        wait(0)
    }

    function find(parent, name) {
        if (parent.objectName === name) return parent
        for (const child of Array.from(parent.children)) {
            const found = find(child, name)
            if (found !== null) return found
        }
        return null
    }
    function item(name) {
        const found = find(panel, name)
        verify(found !== null, name + " is not in the panel")
        return found
    }
    function openMenu(button) {
        mouseClick(button)
        tryCompare(button.menu, "opened", true)
        return button.menu
    }
    function choose(button, index) {
        const menu = openMenu(button)
        mouseClick(menu.itemAt(index))
        tryCompare(menu, "opened", false)
    }

    function test_a_key_takes_every_target_of_its_menu_data() { return keys }
    function test_a_key_takes_every_target_of_its_menu(row) {
        const key = item(row.name)
        for (let i = 0; i < targets.length; ++i) {
            choose(key, i)
            compare(stage.stored(row.tag), targets[i])
            compare(key.isRemapped, i < 4)
            compare(key.mappedTarget, targets[i])
        }
    }

    function test_the_menu_reads_as_given() {
        const menu = openMenu(item("key.ctrl"))
        const texts = []
        for (let i = 0; i < menu.count; ++i) texts.push(menu.itemAt(i).text)
        compare(texts, ["映射为: Ctrl", "映射为: Win", "映射为: Alt", "映射为: Cmd", "恢复默认"])
    }

    function test_the_menu_stays_inside_the_panel_data() { return keys }
    function test_the_menu_stays_inside_the_panel(row) {
        const menu = openMenu(item(row.name))
        const corner = menu.contentItem.mapToItem(panel, 0, 0)
        verify(corner.x >= 0 && corner.y >= 0)
        verify(corner.x + menu.contentItem.width <= panel.width)
        verify(corner.y + menu.contentItem.height <= panel.height)
    }

    function test_a_key_is_mapped_by_keyboard_alone() {
        const key = item("key.cmd")
        key.forceActiveFocus(Qt.TabFocusReason)
        keyClick(Qt.Key_Space)
        tryCompare(key.menu, "opened", true)
        keyClick(Qt.Key_Up)
        keyClick(Qt.Key_Up)
        keyClick(Qt.Key_Up)
        keyClick(Qt.Key_Return)
        compare(stage.stored("map_cmd"), "Win")
        tryCompare(key.menu, "opened", false)
        tryCompare(key, "activeFocus", true)
    }

    function test_escape_closes_the_menu_and_leaves_the_panel() {
        const key = item("key.opt")
        openMenu(key)
        keyClick(Qt.Key_Escape)
        tryCompare(key.menu, "opened", false)
        verify(!stage.isClosed)
        compare(stage.stored("map_option"), undefined)
    }

    function test_a_second_click_closes_the_menu() {
        const key = item("key.ctrl")
        openMenu(key)
        mouseClick(key)
        tryCompare(key.menu, "opened", false)
    }

    function test_a_remapped_key_is_highlighted_until_it_is_restored() {
        const key = item("key.ctrl")
        verify(!key.background.isHighlighted)
        choose(key, 3)
        verify(key.background.isHighlighted)
        compare(key.background.border.width, 1.5)
        choose(key, 4)
        verify(!key.background.isHighlighted)
    }

    function test_the_strategy_chooses_the_menu_beside_it() {
        verify(item("comboMenu").visible)
        verify(!item("sacrificeMenu").visible)
        choose(item("strategyMenu"), 1)
        compare(stage.stored("delete_strategy"), "牺牲单键")
        verify(!item("comboMenu").visible)
        verify(item("sacrificeMenu").visible)
        choose(item("strategyMenu"), 0)
        compare(stage.stored("delete_strategy"), "组合键")
    }

    function test_every_combination_can_be_chosen() {
        const labels = ["Shift", "Fn", "Ctrl", "Option", "Cmd"]
        for (let i = 0; i < labels.length; ++i) {
            choose(item("comboMenu"), i)
            compare(stage.stored("delete_combo_mod"), labels[i])
            compare(item("comboMenu").text, labels[i] + " + Backspace")
        }
    }

    function test_every_key_can_be_sacrificed() {
        choose(item("strategyMenu"), 1)
        const labels = ["F12", "F11", "F10", "` (波浪号)", "Fn"]
        for (let i = 0; i < labels.length; ++i) {
            compare(openMenu(item("sacrificeMenu")).itemAt(i).text, "✓ 牺牲 " + labels[i])
            mouseClick(item("sacrificeMenu").menu.itemAt(i))
            tryCompare(item("sacrificeMenu").menu, "opened", false)
            compare(stage.stored("delete_single_key"), labels[i])
        }
    }

    function test_the_delete_key_shows_the_choice_while_its_card_is_on() {
        const key = item("deleteKey")
        verify(!key.isHighlighted)
        stage.prefer("card_eject", true)
        tryCompare(key, "isHighlighted", true)
        compare(key.spokenFace, "Shift + ⌫")
        choose(item("strategyMenu"), 1)
        compare(key.spokenFace, "F12 → ⌦")
        stage.prefer("card_eject", false)
        tryCompare(key, "isHighlighted", false)
        compare(key.spokenFace, "⌫")
    }

    function test_the_keys_stand_in_one_row_inside_the_board() {
        const last = item("deleteKey")
        const board = last.parent.parent
        verify(last.width >= 44, "the Delete key is " + last.width + " wide")
        compare(last.mapToItem(board, last.width, 0).x, board.width - 10)
    }

    function test_pointer_and_press_show_on_the_key() {
        const key = item("key.ctrl")
        mouseMove(panel, 5, 20)
        tryCompare(key, "hovered", false)
        const rest = String(key.background.color)
        mouseMove(key, 10, 10)
        tryVerify(() => String(key.background.color) !== rest)
        mousePress(key, 10, 10)
        verify(key.background.isDown)
        mouseRelease(key, 10, 10)
    }
}
