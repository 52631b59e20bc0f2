#include "engine/synthesis/keystroke_poster.hpp"

#include <array>

namespace orvel {

void KeystrokePoster::postKeystroke(KeyCode keyCode, EventFlags modifier) {
    // Only the press is given the modifier: the release keeps what the hardware holds.
    const std::array keys{
        PostedKey{.type = EventType::keyDown, .keyCode = keyCode, .flags = modifier},
        PostedKey{.type = EventType::keyUp, .keyCode = keyCode, .flags = {}}};
    if (poster_.postKeys(EventSourceState::hidSystem, keys)) postModifierRelease(flag::none);
}

void KeystrokePoster::postShortcut(KeyCode keyCode, EventFlags modifier) {
    const std::array keys{
        PostedKey{.type = EventType::keyDown, .keyCode = keyCode, .flags = modifier},
        PostedKey{.type = EventType::keyUp, .keyCode = keyCode, .flags = modifier}};
    poster_.postKeys(EventSourceState::hidSystem, keys);
}

void KeystrokePoster::postModifierRelease(EventFlags flags) {
    const std::array keys{
        PostedKey{.type = EventType::flagsChanged, .keyCode = key::leftCommand, .flags = flags}};
    poster_.postKeys(EventSourceState::hidSystem, keys);
}

}  // namespace orvel
