#pragma once

namespace orvel {

/// What the engine asks of the clipboard history. Main thread.
class ClipboardCommands {
public:
    virtual ~ClipboardCommands() = default;

    virtual void moveSelection(bool up) = 0;
    virtual void pasteSelected() = 0;
};

}  // namespace orvel
