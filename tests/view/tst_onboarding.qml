import QtQuick
import QtQuick.Templates as T
import QtTest
import Orvel.Settings
import Orvel.Test

TestCase {
    id: test

    name: "Onboarding"
    when: windowShown
    width: 350
    height: 550
    visible: true

    property TestStage stage
    property ContentView panel

    Component { id: stages; TestStage {} }
    Component { id: panels; ContentView { width: 350; height: 550 } }

    function init() {
        stage = stages.createObject(test)
    }
    function cleanup() {
        panel.destroy()
        wait(0)
        stage.destroy()
        wait(0)
    }
    function show() {
        panel = panels.createObject(test, {vm: stage.viewModel})
        verify(panel !== null)
        waitForRendering(panel)
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
    function settings() {
        return [item("master"), item("cards"), item("strategyMenu")]
    }

    function test_the_settings_show_when_everything_is_there() {
        show()
        for (const part of settings()) verify(part.visible)
        verify(!item("retry").visible)
    }

    function test_the_page_stands_in_place_of_the_settings() {
        stage.keyboardIsThere = false
        show()
        for (const part of settings()) verify(!part.visible)
        verify(item("retry").visible)
        verify(!item("finding.0").isThere)
        verify(item("finding.0").Accessible.name.includes("键盘"))
    }

    function test_what_is_mended_ticks_and_the_settings_follow() {
        stage.keyboardIsThere = false
        show()
        stage.keyboardIsThere = true
        stage.letTimePass(1)
        verify(item("finding.0").isThere)
        verify(item("finding.0").visible)
        compare(item("finding.0").Accessible.name, "键盘，已具备")
        verify(!item("retry").visible)
        stage.letTimePass(2)
        for (const part of settings()) verify(part.visible)
    }

    function test_the_title_counts_what_is_missing() {
        stage.keyboardIsThere = false
        show()
        compare(stage.viewModel.onboarding.title, "还差一步")
        stage.loseKeyboardControl()
        stage.letTimePass(1)
        compare(stage.viewModel.onboarding.title, "还差两步")
    }

    function test_a_click_on_retry_looks_at_once() {
        stage.keyboardIsThere = false
        show()
        stage.keyboardIsThere = true
        mouseClick(item("retry"))
        verify(item("finding.0").isThere)
    }

    function test_a_click_shows_the_settings_all_the_same() {
        stage.keyboardIsThere = false
        show()
        mouseClick(item("later"))
        for (const part of settings()) verify(part.visible)
        stage.letTimePass(3)
        for (const part of settings()) verify(part.visible)
    }

    function test_the_place_of_the_permission_opens() {
        stage.askForPermission()
        show()
        const button = find(item("finding.0"), "settings")
        verify(button.visible)
        mouseClick(button)
        verify(stage.hasOpened("Privacy_Accessibility"))
    }

    function test_tab_reaches_the_buttons_and_nothing_hidden() {
        stage.keyboardIsThere = false
        show()
        panel.forceActiveFocus()
        const reached = new Set()
        for (let i = 0; i < 10; ++i) {
            keyClick(Qt.Key_Tab)
            reached.add(test.Window.activeFocusItem)
        }
        compare(reached.size, 2)
        verify(reached.has(item("retry")) && reached.has(item("later")))
        item("later").forceActiveFocus(Qt.TabFocusReason)
        keyClick(Qt.Key_Return)
        verify(item("master").visible)
    }

    function test_escape_closes_the_panel() {
        stage.keyboardIsThere = false
        show()
        keyClick(Qt.Key_Escape)
        verify(stage.isClosed)
    }

    function test_no_text_is_cut() {
        stage.askForPermission()
        show()
        wait(50)
        function walk(parent) {
            for (const child of Array.from(parent.children)) {
                if (!child.visible) continue
                if (child instanceof Text && child.text !== "") {
                    verify(!child.truncated, child.text + " is cut")
                    verify(child.contentWidth <= child.width + 0.5, child.text + " is too wide")
                }
                walk(child)
            }
        }
        walk(panel)
        const row = item("finding.0")
        verify(row.mapToItem(panel, 0, row.height).y < item("retry").mapToItem(panel, 0, 0).y)
    }
}
