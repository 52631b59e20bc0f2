#include "platform/input_state.hpp"
#include "platform/macos/mac_factories.hpp"

#import <AppKit/AppKit.h>

namespace orvel::macos {

namespace {

class MacInputState final : public InputState {
public:
    [[nodiscard]] EventFlags hidFlags() const override {
        return CGEventSourceFlagsState(kCGEventSourceStateHIDSystemState);
    }
    [[nodiscard]] bool isKeyDown(KeyCode keyCode) const override {
        return CGEventSourceKeyState(kCGEventSourceStateHIDSystemState,
                                     static_cast<CGKeyCode>(keyCode));
    }
    [[nodiscard]] ScreenPoint pointerLocation() const override {
        const NSPoint location = NSEvent.mouseLocation;
        return {location.x, location.y};
    }
};

}  // namespace

std::unique_ptr<InputState> makeInputState() { return std::make_unique<MacInputState>(); }

}  // namespace orvel::macos
