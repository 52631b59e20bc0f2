#include "platform/memory/memory_event_tap.hpp"

namespace orvel::memory {

bool MemoryEventTap::create(const EventTapRequest& request, EventHandler handler) {
    effects_.effect("tap")
        ->beginObject()
        .key("create")
        .beginObject()
        .member("location", request.location)
        .member("placement", request.placement)
        .member("options", request.options)
        .member("mask", request.mask)
        .endObject()
        .endObject();
    if (!world_.canCreateTap) return false;
    handler_ = std::move(handler);
    mask_ = request.mask;
    isEnabled_ = false;
    return true;
}

void MemoryEventTap::enable() {
    if (!exists()) return;
    effects_.effect("tap")->beginObject().member("enable", true).endObject();
    isEnabled_ = true;
}

void MemoryEventTap::deliver(const Event& event) {
    world_.follow(event);
    if (!isEnabled_ || (mask_ & maskOf(event.type)) == 0) {
        effects_.effect("decision")->value("untapped");
        return;
    }
    Event outgoing = event;
    const EventVerdict verdict = handler_(outgoing);
    logDecision(verdict, event, outgoing);
}

void MemoryEventTap::logDecision(EventVerdict verdict, const Event& arrived, const Event& left) {
    auto effect = effects_.effect("decision");
    if (verdict == EventVerdict::swallow) {
        effect->value("swallow");
    } else if (verdict == EventVerdict::pass) {
        effect->value("pass");
    } else if (left.type == EventType::scrollWheel) {
        effect->value("modify")
            .member("deltaAxis1", left.deltaAxis1)
            .member("pointDeltaAxis1", left.pointDeltaAxis1);
    } else if (left.keyCode != arrived.keyCode || left.flags != arrived.flags) {
        effect->value("modify").member("key", left.keyCode).member("flags", left.flags);
    } else {
        effect->value("pass");
    }
}

}  // namespace orvel::memory
