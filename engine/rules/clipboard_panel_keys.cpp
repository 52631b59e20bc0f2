#include "engine/rules/clipboard_panel_keys.hpp"

namespace orvel::rules {

namespace {

bool isPanelKey(KeyCode code) {
    return code == key::returnKey || code == key::keypadEnter || code == key::upArrow ||
           code == key::downArrow || code == key::escape;
}

bool actsOnRepeat(KeyCode code) { return code == key::upArrow || code == key::downArrow; }

Task actionOf(KeyCode code, EngineServices& services) {
    switch (code) {
        case key::upArrow:
            return [&clipboard = services.clipboard] { clipboard.moveSelection(true); };
        case key::downArrow:
            return [&clipboard = services.clipboard] { clipboard.moveSelection(false); };
        case key::escape: return [&overlay = services.overlay] { overlay.toggleClipboardMenu(); };
        default: return [&clipboard = services.clipboard] { clipboard.pasteSelected(); };
    }
}

}  // namespace

RuleOutcome clipboardPanelKeys(RuleContext& context) {
    const KeyCode code = context.incoming.keyCode;
    if (!isPanelKey(code)) return std::nullopt;
    const bool panelShows = context.services.overlay.isClipboardShowing();

    if (!context.isKeyDown()) {
        if (!panelShows && !context.ledger.isSwallowed(code)) return std::nullopt;
        context.ledger.forget(code);
        return EngineDecision::swallow();
    }
    if (!panelShows) return std::nullopt;
    context.ledger.recordSwallowed(code);
    if (!context.incoming.isAutorepeat || actsOnRepeat(code)) {
        context.services.runLoop.post(actionOf(code, context.services));
    }
    return EngineDecision::swallow();
}

}  // namespace orvel::rules
