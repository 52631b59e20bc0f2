#include "platform/macos/mac_tap_guard.hpp"

#include "platform/macos/mac_timer.hpp"

#import <ApplicationServices/ApplicationServices.h>

namespace orvel::macos {

namespace {

constexpr Duration kLookInterval = std::chrono::milliseconds(500);
constexpr int kLooksUntilSecureInputStays = 60;

/// Something that takes the permission: a tap that wants nothing of the kind is given to anybody.
constexpr CGEventMask kProbeMask = CGEventMaskBit(kCGEventKeyDown);

CGEventRef passOn(CGEventTapProxy, CGEventType, CGEventRef event, void*) { return event; }

}  // namespace

TapGuard::TapGuard(std::function<void(TapChange, const SessionState&)> told)
    : told_(std::move(told)),
      timer_(startTimer(kLookInterval, kLookInterval, [this] { look(false); })),
      notices_([this] { look(true); }) {}

bool TapGuard::canTap() {
    const CfRef<CFMachPortRef> probe(CGEventTapCreate(kCGSessionEventTap, kCGTailAppendEventTap,
                                                      kCGEventTapOptionDefault, kProbeMask, passOn,
                                                      nullptr));
    if (probe) CFMachPortInvalidate(probe.get());
    return static_cast<bool>(probe);
}

void TapGuard::look(bool isNotice) {
    const SessionState session = readSession();
    const bool isActive = session.isInFront && !session.isLocked;
    const bool asksAnew = isNotice && isActive;
    const bool isTrusted =
        AXIsProcessTrusted() && CGPreflightPostEventAccess() && (!asksAnew || canTap());
    if (std::exchange(isTrusted_, isTrusted) && !isTrusted) told_(TapChange::trustLost, session);
    if (std::exchange(isActive_, isActive) != isActive) {
        told_(isActive ? TapChange::sessionEntered : TapChange::sessionLeft, session);
    }
    lookAtSecureInput(session);
    if (isNotice) told_(TapChange::lookAgain, session);
}

void TapGuard::lookAtSecureInput(const SessionState& session) {
    if (!session.isSecureInput) {
        secureLooks_.reset();
        return;
    }
    if (!secureLooks_) {
        secureLooks_ = 0;
        told_(TapChange::secureInputBegan, session);
    } else if (++*secureLooks_ == kLooksUntilSecureInputStays) {
        told_(TapChange::secureInputStays, session);
    }
}

}  // namespace orvel::macos
