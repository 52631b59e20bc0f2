#include "app/replay/query_table.hpp"
#include "settings_ui/feature_cards.hpp"
#include "settings_ui/keyboard_drawing.hpp"

namespace orvel::replay {

namespace {

void writeTexts(JsonWriter& out, std::string_view name, const std::vector<std::string>& texts) {
    out.key(name).beginArray();
    for (const std::string& text : texts) out.value(text);
    out.endArray();
}

/// An empty text stands for none.
void writeOptional(JsonWriter& out, std::string_view name, std::string_view text) {
    out.key(name);
    if (text.empty()) {
        out.null();
    } else {
        out.value(text);
    }
}

void writeSwitches(JsonWriter& out, const SettingsModel& settings) {
    out.member("isAllOn", settings.isAllOn()).member("isAnyOn", settings.isAnyOn());
    out.key("cards").beginObject();
    for (const FeatureCard& card : kFeatureCards) {
        out.member(preferenceInfo(card.key).name, settings.isCardOn(card.key));
    }
    out.endObject();
}

void writeLiveTexts(JsonWriter& out, const RemapEditorModel& editor) {
    out.member("modifierText", editor.modifierText())
        .member("modifierHelp", editor.modifierHelp())
        .member("ejectText", editor.ejectText())
        .member("deleteKeyFace", editor.deleteKeyFace());
    out.key("remapped").beginObject();
    for (const DrawnKey& key : kDrawnKeys) {
        if (key.map) out.member(preferenceInfo(*key.map).name, editor.isRemapped(*key.map));
    }
    out.endObject();
}

void writeTables(JsonWriter& out) {
    out.key("header")
        .beginObject()
        .member("title", panel_text::title)
        .member("subtitle", panel_text::subtitle)
        .member("section", panel_text::section)
        .endObject();
    out.key("table").beginArray();
    for (const FeatureCard& card : kFeatureCards) {
        out.beginObject()
            .member("key", preferenceInfo(card.key).name)
            .member("title", card.title());
        writeOptional(out, "description", card.description);
        out.member("symbol", card.symbol).endObject();
    }
    out.endArray().key("keys").beginArray();
    for (const DrawnKey& key : kDrawnKeys) {
        out.beginObject().member("label", key.label);
        writeOptional(out, "symbol", key.symbol);
        writeOptional(out, "key", key.map ? preferenceInfo(*key.map).name : std::string_view());
        out.endObject();
    }
    out.endArray();
}

}  // namespace

void writeSettingsState(ReplaySession& session, JsonWriter& out) {
    const SettingsModel& settings = session.application().settings();
    out.beginObject();
    writeSwitches(out, settings);
    writeLiveTexts(out, settings.editor());
    writeTables(out);
    writeTexts(out, "mapMenu", mapMenuTitles());
    writeTexts(out, "strategyMenu", strategyMenuTitles());
    writeTexts(out, "comboMenu", comboMenuTitles());
    writeTexts(out, "singleMenu", sacrificeMenuTitles());
    out.endObject();
}

}  // namespace orvel::replay
