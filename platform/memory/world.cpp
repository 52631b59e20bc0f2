#include "platform/memory/world.hpp"

#include <algorithm>

namespace orvel::memory {

namespace {

/// The flag that the modifier key of that code carries, 0 for other keys.
EventFlags flagOfModifier(KeyCode keyCode) {
    switch (keyCode) {
        case key::leftCommand:
        case key::rightCommand: return flag::command;
        case key::leftShift:
        case key::rightShift: return flag::shift;
        case key::leftOption:
        case key::rightOption: return flag::option;
        case key::leftControl:
        case key::rightControl: return flag::control;
        case key::capsLock: return flag::capsLock;
        case key::fn: return flag::secondaryFn;
        default: return flag::none;
    }
}

void hold(std::vector<KeyCode>& keysDown, KeyCode keyCode, bool isDown) {
    std::erase(keysDown, keyCode);
    if (isDown) keysDown.push_back(keyCode);
}

}  // namespace

WorldWindow* World::window(WindowNumber number) {
    const auto found = std::find_if(windows.begin(), windows.end(), [number](const auto& window) {
        return window.info.number == number;
    });
    return found == windows.end() ? nullptr : &*found;
}

const CannedOutcome* World::outcomeFor(const std::vector<CannedOutcome>& outcomes,
                                       std::string_view subject) {
    const auto found =
        std::find_if(outcomes.begin(), outcomes.end(), [subject](const auto& outcome) {
            return subject.find(outcome.contains) != std::string_view::npos;
        });
    return found == outcomes.end() ? nullptr : &*found;
}

void World::copyFromOutside(std::optional<std::string> text, std::optional<PixelSize> image,
                            PasteboardMarks marks) {
    pasteboard.text = std::move(text);
    pasteboard.image = image;
    pasteboard.marks = marks;
    ++pasteboard.changeCount;
}

void World::follow(const Event& event) {
    const bool isModifier = event.type == EventType::flagsChanged;
    if (isModifier && !isHidFlagsPinned) hidFlags = event.flags;
    if (isKeysDownPinned) return;
    if (event.type == EventType::keyDown) hold(keysDown, event.keyCode, true);
    if (event.type == EventType::keyUp) hold(keysDown, event.keyCode, false);
    const EventFlags carried = isModifier ? flagOfModifier(event.keyCode) : flag::none;
    if (carried != flag::none) hold(keysDown, event.keyCode, holds(event.flags, carried));
}

void World::removeFromOutside(std::string_view path) {
    const std::string below = std::string(path) + '/';
    const auto isGone = [&](const std::string& candidate) {
        return candidate == path || candidate.starts_with(below);
    };
    std::erase_if(files, [&](const auto& file) { return isGone(file.first); });
    std::erase_if(folders, isGone);
}

bool World::isUnwritable(std::string_view path) const {
    return std::any_of(unwritable.begin(), unwritable.end(),
                       [path](const std::string& prefix) { return path.starts_with(prefix); });
}

}  // namespace orvel::memory
