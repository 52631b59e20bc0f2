#include "platform/x11/input_hub.hpp"

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>

#include <cstring>
#include <memory>
#include <utility>
#include <vector>

namespace orvel::x11 {

namespace {

struct KeyboardDeleter {
    void operator()(XkbDescPtr keyboard) const { XkbFreeKeyboard(keyboard, 0, True); }
};
using Keyboard = std::unique_ptr<XkbDescRec, KeyboardDeleter>;

std::string nameOf(const XkbDescRec& keyboard, int keycode) {
    const char* name = keyboard.names->keys[keycode].name;
    return {name, strnlen(name, XkbKeyNameLength)};
}

std::vector<std::uint32_t> symbolsOf(XkbDescPtr keyboard, int keycode) {
    const int count = XkbKeyNumSyms(keyboard, keycode);
    const KeySym* symbols = XkbKeySymsPtr(keyboard, keycode);
    return {symbols, symbols + count};
}

std::vector<XKeyDescription> readKeys(Display* display) {
    const Keyboard keyboard(XkbGetMap(display, XkbKeySymsMask | XkbKeyTypesMask, XkbUseCoreKbd));
    if (!keyboard || XkbGetNames(display, XkbKeyNamesMask, keyboard.get()) != Success) return {};
    std::vector<XKeyDescription> keys;
    for (int keycode = keyboard->min_key_code; keycode <= keyboard->max_key_code; ++keycode) {
        keys.push_back({.keycode = static_cast<XKeycode>(keycode),
                        .name = nameOf(*keyboard, keycode),
                        .symbols = symbolsOf(keyboard.get(), keycode)});
    }
    return keys;
}

}  // namespace

InputHub::InputHub(X11Session& session)
    : session_(session),
      ledger_(map_, [this](XKeycode key, bool down) { sendKey(key, down); }),
      path_(map_, state_, ledger_),
      buttons_(state_, [this](XButton number, bool down) { sendButton(number, down); }),
      posted_(map_, state_, ledger_) {
    // Keys reach the client that grabbed the server, as they would from the device itself.
    XTestGrabControl(session_.display(), True);
    reloadKeyMap();
}

void InputHub::setFnKey(std::string place) {
    fnKey_ = std::move(place);
    reloadKeyMap();
}

void InputHub::reloadKeyMap() { map_ = KeyMap(readKeys(session_.display()), fnKey_); }

void InputHub::sendKey(XKeycode key, bool down) {
    if (session_.isAlive()) XTestFakeKeyEvent(session_.display(), key, down ? True : False, 0);
}

void InputHub::sendButton(XButton number, bool down) {
    if (!session_.isAlive()) return;
    XTestFakeButtonEvent(session_.display(), static_cast<unsigned>(number), down ? True : False, 0);
}

void InputHub::setTranslator(const ShortcutTranslator& translator) {
    path_.setTranslator(translator);
    posted_.setTranslator(translator);
}

void InputHub::setHandler(const EventHandler& handler) {
    path_.setHandler(handler);
    buttons_.setHandler(handler);
}

void InputHub::sendMotion(int dx, int dy) {
    if (session_.isAlive()) XTestFakeRelativeMotionEvent(session_.display(), dx, dy, 0);
}

void InputHub::flush() {
    if (session_.isAlive()) XFlush(session_.display());
}

void InputHub::wakeIfPending() {
    const bool isPending =
        session_.isAlive() && XEventsQueued(session_.display(), QueuedAlready) > 0;
    if (isPending && wake_) wake_();
}

}  // namespace orvel::x11
