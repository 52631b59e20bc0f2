#include "app/replay/calls.hpp"

#include <array>

namespace orvel::replay {

namespace {

/// A call of `operation` with the argument `value`.
Call withFlag(ObjectReader& arguments, void (OrvelEngine::*operation)(bool)) {
    bool value = false;
    arguments.required("value", value);
    return always(
        [=](ReplaySession& session) { (session.application().engine().*operation)(value); });
}

}  // namespace

Call engineStart(ObjectReader&) {
    return always([](ReplaySession& session) { session.application().engine().start(); });
}

Call engineToggleInputSource(ObjectReader&) {
    return always(
        [](ReplaySession& session) { session.application().engine().toggleInputSourceViaTIS(); });
}

Call engineIsCurrentInputChinese(ObjectReader&) {
    return always([](ReplaySession& session) {
        static_cast<void>(session.application().engine().isCurrentInputChinese());
    });
}

Call engineSetWindowsModeEnabled(ObjectReader& arguments) {
    return withFlag(arguments, &OrvelEngine::setWindowsModeEnabled);
}

Call engineSetPaused(ObjectReader& arguments) {
    return withFlag(arguments, &OrvelEngine::setPaused);
}

Call engineSetMouseSideButtonEnabled(ObjectReader& arguments) {
    return withFlag(arguments, &OrvelEngine::setMouseSideButtonEnabled);
}

Call engineSetAltMenuEnabled(ObjectReader& arguments) {
    return withFlag(arguments, &OrvelEngine::setAltMenuEnabled);
}

Call engineSetCapsLockHardwareState(ObjectReader& arguments) {
    return withFlag(arguments, &OrvelEngine::setCapsLockHardwareState);
}

Call enginePostKeystroke(ObjectReader& arguments) {
    std::uint16_t keyCode = 0;
    EventFlags modifier = 0;
    arguments.required("keyCode", keyCode);
    arguments.required("modifier", modifier);
    return always([=](ReplaySession& session) {
        session.application().engine().postKeystroke(keyCode, modifier);
    });
}

Call enginePostMediaKey(ObjectReader& arguments) {
    MediaKeyType keyType = 0;
    arguments.required("keyType", keyType);
    return always(
        [=](ReplaySession& session) { session.application().engine().postMediaKey(keyType); });
}

Call engineSnapActiveWindow(ObjectReader& arguments) {
    constexpr std::array<std::string_view, 4> directions{"left", "right", "up", "down"};
    auto direction = SnapDirection::left;
    arguments.requiredName("direction", directions, direction);
    return always([=](ReplaySession& session) {
        session.application().engine().snapActiveWindow(direction);
    });
}

}  // namespace orvel::replay
