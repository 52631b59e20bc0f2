#include "platform/macos/mac_held_keys.hpp"

#include <vector>

namespace orvel::macos {

namespace {

bool isOwn(const Event& event) { return event.userData == kSyntheticMarker; }

}  // namespace

void HeldKeys::note(const Event& came, const Event& left, EventVerdict verdict) {
    if (came.type != EventType::keyDown && came.type != EventType::keyUp) return;
    if (isOwn(came)) return;
    const bool isRewrittenPress = came.type == EventType::keyDown &&
                                  verdict == EventVerdict::modify && left.keyCode != came.keyCode;
    if (isRewrittenPress) {
        outputOf_[came.keyCode] = left.keyCode;
    } else if (came.type == EventType::keyUp || !came.isAutorepeat) {
        outputOf_.erase(came.keyCode);
    }
}

Event HeldKeys::asItWasPressed(Event event) const {
    const bool isHeld = event.type == EventType::keyUp || event.isAutorepeat;
    const auto output = outputOf_.find(event.keyCode);
    if (isHeld && output != outputOf_.end() && !isOwn(event)) event.keyCode = output->second;
    return event;
}

void HeldKeys::letGo(EventPoster& poster, const InputState& input) {
    release(poster, input, [](KeyCode) { return true; });
}

void HeldKeys::letGoOfReleased(EventPoster& poster, const InputState& input) {
    release(poster, input, [&](KeyCode pressed) { return !input.isKeyDown(pressed); });
}

template <typename Wanted>
void HeldKeys::release(EventPoster& poster, const InputState& input, Wanted wanted) {
    std::vector<PostedKey> events;
    std::erase_if(outputOf_, [&](const auto& held) {
        if (!wanted(held.first)) return false;
        events.push_back({.type = EventType::keyUp, .keyCode = held.second, .flags = flag::none});
        return true;
    });
    if (events.empty()) return;
    events.push_back(
        {.type = EventType::flagsChanged, .keyCode = key::leftCommand, .flags = input.hidFlags()});
    poster.postKeys(EventSourceState::hidSystem, events);
}

}  // namespace orvel::macos
