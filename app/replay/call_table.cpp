#include "app/replay/call_table.hpp"

#include <algorithm>
#include <array>

namespace orvel::replay {

namespace {

constexpr CallReader kNotBuilt = nullptr;

constexpr std::array kCalls{
    CallRow{"engine.start", engineStart},
    CallRow{"engine.toggleInputSourceViaTIS", engineToggleInputSource},
    CallRow{"engine.isCurrentInputChinese", engineIsCurrentInputChinese},
    CallRow{"engine.setWindowsModeEnabled", engineSetWindowsModeEnabled},
    CallRow{"engine.setPaused", engineSetPaused},
    CallRow{"engine.setMouseSideButtonEnabled", engineSetMouseSideButtonEnabled},
    CallRow{"engine.setAltMenuEnabled", engineSetAltMenuEnabled},
    CallRow{"engine.setCapsLockHardwareState", engineSetCapsLockHardwareState},
    CallRow{"engine.postKeystroke", enginePostKeystroke},
    CallRow{"engine.postMediaKey", enginePostMediaKey},
    CallRow{"engine.snapActiveWindow", engineSnapActiveWindow},

    CallRow{"statusItem.click", statusItemClick},

    CallRow{"overlay.setTaskbarEnabled", kNotBuilt},
    CallRow{"overlay.toggleNativeDockAutoHide", kNotBuilt},
    CallRow{"overlay.showStartMenu", kNotBuilt},
    CallRow{"overlay.closeStartMenu", kNotBuilt},
    CallRow{"overlay.toggleClipboardMenu", kNotBuilt},
    CallRow{"overlay.showGeekMenu", kNotBuilt},
    CallRow{"overlay.getClipboardTargetPosition", kNotBuilt},
    CallRow{"overlay.openSystemApp", kNotBuilt},

    CallRow{kMenuChoose, menuChoose},

    CallRow{"clipboard.startListening", kNotBuilt},
    CallRow{"clipboard.pasteSelected", kNotBuilt},
    CallRow{"clipboard.moveSelection", kNotBuilt},
    CallRow{"clipboard.pasteItem", kNotBuilt},
    CallRow{"clipboard.togglePin", kNotBuilt},
    CallRow{"clipboard.deleteItem", kNotBuilt},
    CallRow{"clipboard.selectTab", kNotBuilt},

    CallRow{"taskbar.appear", kNotBuilt},
    CallRow{"taskbar.updateApps", kNotBuilt},
    CallRow{"taskbar.setAvailableWidth", kNotBuilt},
    CallRow{"taskbar.togglePinState", kNotBuilt},
    CallRow{"taskbar.handleAppClick", kNotBuilt},
    CallRow{"taskbar.hoverEnter", kNotBuilt},
    CallRow{"taskbar.hoverExit", kNotBuilt},
    CallRow{"taskbar.contextMenu", kNotBuilt},
    CallRow{"taskbar.previewEnter", kNotBuilt},
    CallRow{"taskbar.previewExit", kNotBuilt},
    CallRow{"taskbar.startButton", kNotBuilt},
    CallRow{"taskbar.startButtonMenu", kNotBuilt},
    CallRow{"taskbar.toggleOverflow", kNotBuilt},
    CallRow{"taskbar.dropFiles", kNotBuilt},

    CallRow{"preview.getWindowSnapshots", kNotBuilt},
    CallRow{"preview.activateWindow", kNotBuilt},

    CallRow{"startMenu.appear", kNotBuilt},
    CallRow{"startMenu.openAccountSettings", kNotBuilt},
    CallRow{"startMenu.logOut", kNotBuilt},
    CallRow{"startMenu.search", kNotBuilt},
    CallRow{"startMenu.openApp", kNotBuilt},
    CallRow{"startMenu.power", kNotBuilt},

    CallRow{"finderMenu.showMenu", kNotBuilt},
    CallRow{"finderMenu.closeMenu", kNotBuilt},
    CallRow{"finderMenu.navigate", kNotBuilt},
    CallRow{"finderMenu.action", kNotBuilt},
    CallRow{"finderMenu.hoverNew", kNotBuilt},
    CallRow{"finderMenu.leaveNew", kNotBuilt},
    CallRow{"finderMenu.clickNew", kNotBuilt},

    CallRow{"settings.appear", settingsAppear},
    CallRow{"settings.setCard", settingsSetCard},
    CallRow{"settings.setMaster", settingsSetMaster},
    CallRow{"settings.setMap", settingsSetMap},
    CallRow{"settings.setDelete", settingsSetDelete},
};

/// A call without arguments may be written as its name alone.
Json asObject(const Json& value) {
    if (value.asString() == nullptr) return value;
    return Json(JsonObject{{"op", value}});
}

}  // namespace

std::span<const CallRow> callTable() { return kCalls; }

std::optional<StepProblem> runCall(const Json& value, ReplaySession& session) {
    const Json object = asObject(value);
    if (object.asObject() == nullptr) {
        return StepProblem{.text = "call: must be the name of an operation or an object"};
    }
    Problem problem;
    std::string op;
    ObjectReader head(JsonField(object, "call", problem));
    head.required("op", op);
    if (!problem.empty()) return StepProblem{.text = problem};

    const auto row = std::find_if(kCalls.begin(), kCalls.end(),
                                  [&op](const CallRow& candidate) { return candidate.op == op; });
    if (row == kCalls.end()) {
        return StepProblem{.text = "call.op: " + inQuotes(op) + " is no operation"};
    }
    if (row->read == kNotBuilt) return notAvailable(op);

    ObjectReader arguments(JsonField(object, row->op, problem));
    arguments.take("op");
    const Call call = row->read(arguments);
    arguments.finish();
    if (!problem.empty()) return StepProblem{.text = problem};
    session.application();
    return call(session);
}

}  // namespace orvel::replay
