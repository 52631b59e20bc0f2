#include "tools/rig/screen_state.hpp"

#include "tools/rig/rig_error.hpp"

#include <X11/XKBlib.h>
#include <X11/extensions/XInput.h>
#include <X11/extensions/XTest.h>
#include <X11/extensions/scrnsaver.h>

#include <array>
#include <cstring>
#include <memory>

namespace orvel::rig {
namespace {

constexpr const char* kSyntheticKeyboard = "Virtual core XTEST keyboard";
constexpr int kFirstKeycode = 8;

template <class Byte>
std::vector<PhysicalKey> keysIn(const Byte* bitmap) {
    std::vector<PhysicalKey> keys;
    for (int code = kFirstKeycode; code < 256; ++code) {
        if ((static_cast<unsigned char>(bitmap[code / 8]) >> (code % 8) & 1) != 0) {
            keys.emplace_back(code);
        }
    }
    return keys;
}

XkbStateRec keyboardState(XConnection& x) {
    XkbStateRec state{};
    XkbGetState(x.get(), XkbUseCoreKbd, &state);
    return state;
}

struct PointerQuery {
    ScreenPoint at;
    unsigned mask = 0;
};

PointerQuery queryPointer(XConnection& x) {
    PointerQuery query;
    Window rootWindow = None;
    Window child = None;
    ScreenPoint inWindow;
    XQueryPointer(x.get(), x.root(), &rootWindow, &child, &query.at.x, &query.at.y, &inWindow.x,
                  &inWindow.y, &query.mask);
    return query;
}

}  // namespace

std::vector<PhysicalKey> ScreenState::keysDown() const {
    std::array<char, 32> bitmap{};
    XQueryKeymap(x_.get(), bitmap.data());
    return keysIn(bitmap.data());
}

std::vector<PhysicalKey> ScreenState::keysDownOn(const std::string& device) const {
    const auto id = static_cast<XID>(x_.deviceId(device));
    const auto close = [this](XDevice* opened) { XCloseDevice(x_.get(), opened); };
    const std::unique_ptr<XDevice, decltype(close)> opened(XOpenDevice(x_.get(), id), close);
    if (!opened) {
        throw RigError("cannot open device " + device);
    }
    const std::unique_ptr<XDeviceState, decltype(&XFreeDeviceState)> state(
        XQueryDeviceState(x_.get(), opened.get()), XFreeDeviceState);
    const char* part = state ? reinterpret_cast<const char*>(state->data) : nullptr;
    for (int at = 0; part != nullptr && at < state->num_classes; ++at) {
        XInputClass header{};
        std::memcpy(&header, part, sizeof header);
        if (header.c_class == KeyClass) {
            XKeyState keys{};
            std::memcpy(&keys, part, sizeof keys);
            return keysIn(keys.keys);
        }
        part += header.length;
    }
    throw RigError("device " + device + " has no keys");
}

std::vector<PhysicalKey> ScreenState::syntheticKeysDown() const {
    return keysDownOn(kSyntheticKeyboard);
}

std::vector<int> ScreenState::buttonsDown() const {
    const unsigned mask = queryPointer(x_).mask;
    std::vector<int> buttons;
    for (int button = 1; button <= 5; ++button) {
        if ((mask & (Button1Mask << (button - 1))) != 0) {
            buttons.push_back(button);
        }
    }
    return buttons;
}

unsigned ScreenState::modifiers() const { return keyboardState(x_).mods; }

bool ScreenState::capsLock() const { return (keyboardState(x_).locked_mods & kCapsLock) != 0; }

bool ScreenState::numLock() const { return (keyboardState(x_).locked_mods & kNumLock) != 0; }

int ScreenState::layoutGroup() const { return keyboardState(x_).group; }

void ScreenState::lockLayoutGroup(int group) {
    XkbLockGroup(x_.get(), XkbUseCoreKbd, static_cast<unsigned>(group));
    x_.sync();
}

void ScreenState::releaseEverything() {
    for (const PhysicalKey key : keysDown()) {
        XTestFakeKeyEvent(x_.get(), static_cast<unsigned>(key.code), False, CurrentTime);
    }
    XkbLockModifiers(x_.get(), XkbUseCoreKbd, kShift | kCapsLock | kControl | kAlt | kNumLock, 0);
    x_.sync();
}

ScreenPoint ScreenState::pointer() const { return queryPointer(x_).at; }

void ScreenState::warpPointer(ScreenPoint to) {
    XWarpPointer(x_.get(), None, x_.root(), 0, 0, 0, 0, to.x, to.y);
    x_.sync();
}

WindowId ScreenState::clipboardOwner() const {
    return XGetSelectionOwner(x_.get(), x_.atom("CLIPBOARD"));
}

unsigned long ScreenState::idleMs() const {
    const std::unique_ptr<XScreenSaverInfo, decltype(&XFree)> info(XScreenSaverAllocInfo(), XFree);
    XScreenSaverQueryInfo(x_.get(), x_.root(), info.get());
    return info->idle;
}

}  // namespace orvel::rig
