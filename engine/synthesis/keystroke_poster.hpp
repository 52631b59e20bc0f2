#pragma once

#include "platform/event_poster.hpp"

namespace orvel {

/// Posts whole keystrokes that carry the marker. Any thread.
class KeystrokePoster {
public:
    explicit KeystrokePoster(EventPoster& poster) : poster_(poster) {}

    /// Presses and releases a key with exactly these modifiers, then reports every modifier as
    /// released, so that none stays behind. Does nothing when the events cannot be created.
    void postKeystroke(KeyCode keyCode, EventFlags modifier);
    /// Presses and releases a key, both with exactly these modifiers.
    void postShortcut(KeyCode keyCode, EventFlags modifier);
    /// Reports the left Command key as released while `flags` are held.
    void postModifierRelease(EventFlags flags);

private:
    EventPoster& poster_;
};

}  // namespace orvel
