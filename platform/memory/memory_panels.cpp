#include "platform/memory/memory_panels.hpp"

#include <algorithm>

namespace orvel::memory {

namespace {

void writeRect(JsonWriter& out, ScreenRect rect) {
    out.beginArray().value(rect.x).value(rect.y).value(rect.width).value(rect.height).endArray();
}

void logCreation(EffectLog& effects, const PanelSpec& spec) {
    auto effect = effects.effect("panel");
    effect->beginObject().member("id", panelName(spec.id)).member("op", "create").key("frame");
    writeRect(*effect, spec.contentRect);
    if (spec.level) effect->member("level", *spec.level);
    effect->member("styleMask", spec.styleMask);
    if (spec.collectionBehavior) effect->member("collectionBehavior", *spec.collectionBehavior);
    effect->endObject();
}

}  // namespace

class MemoryPanels::MemoryPanel final : public Panel {
public:
    MemoryPanel(EffectLog& effects, std::shared_ptr<List> list, std::shared_ptr<PanelState> state)
        : effects_(effects), list_(std::move(list)), state_(std::move(state)) {}
    ~MemoryPanel() override { std::erase(*list_, state_); }

    void setFrame(ScreenRect frame) override {
        auto effect = effects_.effect("panel");
        beginOperation(*effect, "setFrame").key("frame");
        writeRect(*effect, frame);
        effect->endObject();
        state_->frame = frame;
    }
    void setFrameOrigin(ScreenPoint origin) override {
        auto effect = effects_.effect("panel");
        beginOperation(*effect, "setFrameOrigin").key("origin");
        effect->beginArray().value(origin.x).value(origin.y).endArray().endObject();
        state_->frame.x = origin.x;
        state_->frame.y = origin.y;
    }
    void makeKeyAndOrderFront() override { order("makeKeyAndOrderFront", true); }
    void orderFrontRegardless() override { order("orderFrontRegardless", true); }
    void orderOut() override { order("orderOut", false); }
    [[nodiscard]] bool isVisible() const override { return state_->isVisible; }
    [[nodiscard]] ScreenRect frame() const override { return state_->frame; }
    [[nodiscard]] Size fittingSize() const override { return state_->spec.contentRect.size(); }

private:
    JsonWriter& beginOperation(JsonWriter& out, std::string_view op) const {
        return out.beginObject().member("id", panelName(state_->spec.id)).member("op", op);
    }
    void order(std::string_view op, bool visible) {
        auto effect = effects_.effect("panel");
        beginOperation(*effect, op).endObject();
        state_->isVisible = visible;
    }

    EffectLog& effects_;
    std::shared_ptr<List> list_;
    std::shared_ptr<PanelState> state_;
};

std::unique_ptr<Panel> MemoryPanels::create(const PanelSpec& spec) {
    logCreation(effects_, spec);
    auto state = std::make_shared<PanelState>(PanelState{spec, spec.contentRect});
    panels_->push_back(state);
    return std::make_unique<MemoryPanel>(effects_, panels_, std::move(state));
}

const PanelState* MemoryPanels::existing(PanelId id) const {
    for (const auto& panel : *panels_) {
        if (panel->spec.id == id) return panel.get();
    }
    return nullptr;
}

}  // namespace orvel::memory
