import QtQuick
import QtTest
import Orvel.Settings
import Orvel.Test

TestCase {
    id: test

    name: "SettingsCards"
    when: windowShown
    width: 350
    height: 550
    visible: true

    readonly property var keys: [
        "card_modifier", "card_eject", "card_snap", "card_finder", "card_syscmd", "card_tab",
        "card_fn", "card_scroll", "card_shift", "card_fkeys", "cardMouseSide", "cardAltMenu",
        "card_taskbar", "card_drag_drop", "card_win_advanced"]
    readonly property var onAtFirst: ["card_fkeys", "cardMouseSide", "cardAltMenu", "card_drag_drop"]

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
    function card(index) {
        const found = item("card." + index)
        const grid = item("cards")
        const top = found.mapToItem(grid.contentItem, 0, 0).y
        grid.contentY = Math.max(0, Math.min(top - 10, grid.contentHeight - grid.height))
        return found
    }

    function test_every_card_shows_its_default_data() {
        return keys.map((key, index) => ({tag: key, index: index, isOn: onAtFirst.includes(key)}))
    }
    function test_every_card_shows_its_default(row) {
        compare(card(row.index).isOn, row.isOn)
    }

    function test_a_click_on_the_switch_writes_the_setting_data() {
        return test_every_card_shows_its_default_data()
    }
    function test_a_click_on_the_switch_writes_the_setting(row) {
        mouseClick(card(row.index).toggle)
        compare(stage.stored(row.tag), !row.isOn)
        compare(card(row.index).isOn, !row.isOn)
        mouseClick(card(row.index).toggle)
        compare(stage.stored(row.tag), row.isOn)
    }

    function test_space_and_return_turn_the_focused_switch() {
        card(2).toggle.forceActiveFocus(Qt.TabFocusReason)
        keyClick(Qt.Key_Space)
        compare(stage.stored("card_snap"), true)
        keyClick(Qt.Key_Return)
        compare(stage.stored("card_snap"), false)
    }

    function test_arrows_move_between_cards() {
        card(0).toggle.forceActiveFocus(Qt.TabFocusReason)
        keyClick(Qt.Key_Right)
        verify(card(1).toggle.activeFocus)
        keyClick(Qt.Key_Down)
        verify(card(4).toggle.activeFocus)
        keyClick(Qt.Key_Left)
        verify(card(3).toggle.activeFocus)
        keyClick(Qt.Key_Up)
        verify(card(0).toggle.activeFocus)
        keyClick(Qt.Key_Up)
        verify(card(0).toggle.activeFocus)
    }

    function test_the_focused_card_scrolls_into_view() {
        const grid = item("cards")
        item("card.0").toggle.forceActiveFocus(Qt.TabFocusReason)
        for (let i = 0; i < 4; ++i) keyClick(Qt.Key_Down)
        const last = item("card.12")
        const bottom = last.mapToItem(grid, 0, last.height).y
        verify(bottom <= grid.height, "the card ends at " + bottom + " of " + grid.height)
        verify(last.mapToItem(grid, 0, 0).y >= 0)
    }

    function test_the_pointer_sees_which_card_it_is_on() {
        const target = card(3)
        mouseMove(target, 20, 60)
        tryCompare(target, "isHovered", true)
        mouseMove(panel, 5, 20)
        tryCompare(target, "isHovered", false)
    }

    function test_only_a_keyboard_sees_the_focus_ring() {
        const toggle = card(2).toggle
        mouseClick(toggle)
        verify(!toggle.visualFocus)
        toggle.forceActiveFocus(Qt.TabFocusReason)
        verify(toggle.visualFocus)
    }

    function test_a_setting_of_another_process_shows_at_once() {
        stage.prefer("card_snap", true)
        tryCompare(card(2), "isOn", true, 1000)
        compare(stage.stored("card_snap"), true)
    }

    function test_the_knob_springs_to_its_side() {
        const toggle = card(2).toggle
        const seen = []
        toggle.positionChanged.connect(() => seen.push(toggle.position))
        mouseClick(toggle)
        tryVerify(() => toggle.position === 1 && seen.length > 3)
        verify(seen.some(position => position > 0 && position < 1))
        verify(seen.some(position => position > 1), "a damping fraction of 0.7 overshoots")
    }

    function test_special_cards_explain_themselves_data() {
        return [{tag: "modifier", index: 0}, {tag: "eject", index: 1}]
    }
    function test_special_cards_explain_themselves(row) {
        const target = card(row.index)
        const info = target.accessories[0]
        verify(target.helpText.length > 20)
        mouseClick(info)
        tryCompare(target, "showInfo", true)
        keyClick(Qt.Key_Escape)
        tryCompare(target, "showInfo", false)
        verify(!stage.isClosed, "Esc closes the popover first")
        mouseClick(info)
        tryCompare(target, "showInfo", true)
        mouseClick(panel, 300, 540)
        tryCompare(target, "showInfo", false)
    }

    function test_the_keyboard_alone_opens_and_closes_an_explanation_data() {
        return [{tag: "Space", key: Qt.Key_Space}, {tag: "Return", key: Qt.Key_Return},
                {tag: "Enter", key: Qt.Key_Enter}]
    }
    function test_the_keyboard_alone_opens_and_closes_an_explanation(row) {
        const target = card(1)
        const info = target.accessories[0]
        info.forceActiveFocus(Qt.TabFocusReason)
        keyClick(row.key)
        tryCompare(target, "showInfo", true)
        keyClick(Qt.Key_Escape)
        tryCompare(target, "showInfo", false)
        tryVerify(() => info.activeFocus && info.visualFocus)
    }

    function test_no_explanation_leaves_a_single_character_on_its_last_line() {
        mouseClick(item("master"))
        for (const place of [0, 1]) {
            const info = card(place).accessories[0]
            mouseClick(info)
            tryCompare(card(place), "showInfo", true)
            const sentence = find(test.Window.contentItem.parent ?? test.Window.contentItem, "sentence")
            verify(sentence !== null)
            tryVerify(() => sentence.lineCount > 1 && sentence.lastLineWidth > 22)
            verify(sentence.height + 20 <= sentence.parent.parent.height + 0.5, "cut below")
            mouseClick(info)
            tryCompare(card(place), "showInfo", false)
        }
    }

    function test_the_modifier_card_lists_changed_keys() {
        mouseClick(card(0).toggle)
        compare(stage.viewModel.changedMaps, ["ctrl", "Cmd", "opt", "Alt", "cmd", "Win",
                                              "右cmd", "Alt", "右opt", "Win"])
        for (const target of ["Cmd", "Alt", "Win"]) {
            verify(card(0).shownText.includes(target + "</font>"), card(0).shownText)
        }
    }

    function test_the_master_switch_turns_everything() {
        const master = item("master")
        mouseClick(master)
        for (const key of keys) compare(stage.stored(key), true, key)
        verify(master.isOn)
        mouseClick(card(5).toggle)
        verify(!master.isOn)
        mouseClick(master)
        mouseClick(master)
        for (const key of keys) compare(stage.stored(key), false, key)
    }

    function test_showing_the_panel_turns_the_engine_on() {
        verify(stage.isEngineOn())
        compare(stage.stored("has_wiped_old_data_v3"), true)
    }

    function test_a_paused_engine_is_resumed_by_one_click() {
        verify(!item("resume").visible)
        stage.pauseEngine()
        tryCompare(item("resume"), "visible", true)
        mouseClick(item("resume"))
        tryCompare(item("resume"), "visible", false)
        verify(!stage.viewModel.isPaused)
    }

    function test_escape_closes_the_panel() {
        panel.forceActiveFocus()
        keyClick(Qt.Key_Escape)
        verify(stage.isClosed)
    }

    function test_tab_reaches_every_control_once_round() {
        const reached = new Set()
        panel.forceActiveFocus()
        for (let i = 0; i < 60; ++i) {
            keyClick(Qt.Key_Tab)
            reached.add(test.Window.activeFocusItem)
        }
        const controls = [item("master"), item("strategyMenu"), item("comboMenu"),
                          item("key.ctrl"), item("key.opt"), item("key.cmd"), item("key.右cmd"),
                          item("key.右opt"), item("card.0").accessories[0]]
        for (let i = 0; i < keys.length; ++i) controls.push(item("card." + i).toggle)
        for (const control of controls) verify(reached.has(control), control.text)
    }
}
