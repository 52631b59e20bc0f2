import QtQuick
import QtQuick.Templates as T
import QtTest
import Orvel.Settings
import Orvel.Test

TestCase {
    id: test

    name: "SettingsPanel"
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
    function test_every_control_has_a_name() {
        const nameless = []
        function walk(parent) {
            for (const child of Array.from(parent.children)) {
                if (child instanceof T.AbstractButton && child.Accessible.name === "") {
                    nameless.push(child.objectName + child)
                }
                walk(child)
            }
        }
        walk(panel)
        compare(nameless, [])
    }

    function test_every_control_is_large_enough_to_hit() {
        function walk(parent) {
            for (const child of Array.from(parent.children)) {
                if (child instanceof T.AbstractButton && child.visible) {
                    verify(child.width >= 24 && child.height >= 24,
                           child.text + " is " + child.width + " x " + child.height)
                }
                walk(child)
            }
        }
        walk(panel)
    }

    function test_no_text_is_cut_data() {
        return [{tag: "fresh", prefs: {}},
                {tag: "all on", prefs: {all: true}},
                {tag: "longest delete choice", prefs: {card_eject: true, delete_strategy: "牺牲单键",
                                                       delete_single_key: "` (波浪号)"}},
                {tag: "longest combination", prefs: {card_eject: true, delete_combo_mod: "Option"}}]
    }
    function test_no_text_is_cut(row) {
        if (row.prefs.all) mouseClick(item("master"))
        else for (const key in row.prefs) stage.prefer(key, row.prefs[key])
        wait(150)
        function walk(parent) {
            for (const child of Array.from(parent.children)) {
                if (!child.visible) continue
                if (child instanceof Text && child.text !== "") {
                    verify(!child.truncated, child.text + " is cut")
                    verify(child.contentWidth <= child.width + 0.5, child.text + " is too wide")
                    const holder = child.parent
                    verify(child.y + child.contentHeight <= holder.height + 0.5,
                           child.text + " is too high")
                    verify(child.x >= -0.5 && child.x + child.contentWidth <= holder.width + 0.5,
                           child.text + " leaves its place")
                }
                walk(child)
            }
        }
        walk(panel)
    }
}
