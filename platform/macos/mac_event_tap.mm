#include "platform/event_tap.hpp"

#include "platform/log.hpp"
#include "platform/macos/mac_event_fields.hpp"
#include "platform/macos/mac_factories.hpp"
#include "platform/macos/mac_held_keys.hpp"
#include "platform/macos/mac_tap_guard.hpp"
#include "platform/macos/mac_text.hpp"

#import <AppKit/AppKit.h>

#include <chrono>

namespace orvel::macos {

namespace {

using Clock = std::chrono::steady_clock;

/// Switched off again within this time, the tap waits for the next look: it cannot keep up, and
/// coming back at once would freeze the input.
constexpr auto kTooSoon = std::chrono::seconds(1);

constexpr std::string_view kTrustLostLine =
    "⚠️ 辅助功能权限已被收回，键盘鼠标规则已停止！"
    "请在系统设置 -> 隐私与安全性 -> 辅助功能 中重新打勾！";

std::string secureInputLine(const SessionState& session) {
    std::string who = "某个程序";
    if (session.secureInputOwner) {
        NSRunningApplication* owner = [NSRunningApplication
            runningApplicationWithProcessIdentifier:*session.secureInputOwner];
        who =
            utf8(owner.localizedName) + " (PID " + std::to_string(*session.secureInputOwner) + ")";
    }
    return "🔒 安全键盘输入一直被占用，期间按键规则不生效: " + who;
}

class MacEventTap final : public EventTap {
public:
    MacEventTap(EventPoster& poster, const InputState& input, Log& log)
        : poster_(poster), input_(input), log_(log) {}
    ~MacEventTap() override { uninstall(); }

    [[nodiscard]] bool create(const EventTapRequest& request, EventHandler handler) override {
        uninstall();
        request_ = request;
        handler_ = std::move(handler);
        isWanted_ = false;
        isAway_ = false;
        if (!install()) return false;
        guard_ = std::make_unique<TapGuard>(
            [this](TapChange change, const SessionState& session) { heard(change, session); });
        return true;
    }

    void enable() override {
        isWanted_ = true;
        if (port_) CGEventTapEnable(port_.get(), true);
    }

    [[nodiscard]] bool exists() const override { return port_ || isAway_; }

    [[nodiscard]] bool isEnabled() const override {
        if (isAway_) return isWanted_;
        return port_ && CGEventTapIsEnabled(port_.get());
    }

private:
    bool install();
    void uninstall();
    void drop();
    void leave();
    void enter();
    void heard(TapChange change, const SessionState& session);
    void wasSwitchedOff();
    CGEventRef decide(CGEventType type, CGEventRef event);
    static CGEventRef receive(CGEventTapProxy proxy, CGEventType type, CGEventRef event,
                              void* userInfo);

    EventPoster& poster_;
    const InputState& input_;
    Log& log_;
    EventTapRequest request_;
    EventHandler handler_;
    CfRef<CFMachPortRef> port_;
    CfRef<CFRunLoopSourceRef> source_;
    bool isWanted_ = false;  ///< enabled, as far as the caller is concerned
    bool isAway_ = false;    ///< given back while another session has the screen
    Clock::time_point lastSwitchedOff_;
    HeldKeys held_;
    std::unique_ptr<TapGuard> guard_;
};

bool MacEventTap::install() {
    port_ = CfRef(CGEventTapCreate(static_cast<CGEventTapLocation>(request_.location),
                                   static_cast<CGEventTapPlacement>(request_.placement),
                                   static_cast<CGEventTapOptions>(request_.options), request_.mask,
                                   receive, this));
    if (!port_) return false;
    source_ = CfRef(CFMachPortCreateRunLoopSource(kCFAllocatorDefault, port_.get(), 0));
    if (!source_) {
        uninstall();
        return false;
    }
    CFRunLoopAddSource(CFRunLoopGetMain(), source_.get(), kCFRunLoopCommonModes);
    CGEventTapEnable(port_.get(), isWanted_);
    return true;
}

/// A port that is only released stays in the system's list of taps and slows every event.
void MacEventTap::uninstall() {
    if (source_) CFRunLoopRemoveSource(CFRunLoopGetMain(), source_.get(), kCFRunLoopCommonModes);
    if (port_) CFMachPortInvalidate(port_.get());
    source_ = {};
    port_ = {};
}

void MacEventTap::drop() {
    uninstall();
    isAway_ = false;
    log_.line(kTrustLostLine);
}

void MacEventTap::leave() {
    if (!port_) return;
    uninstall();
    isAway_ = true;
}

void MacEventTap::enter() {
    if (!std::exchange(isAway_, false)) return;
    held_.letGoOfReleased(poster_, input_);
    if (!install()) drop();
}

void MacEventTap::heard(TapChange change, const SessionState& session) {
    switch (change) {
        case TapChange::trustLost:
            if (exists()) drop();
            return;
        case TapChange::sessionLeft:
            return leave();
        case TapChange::sessionEntered:
            return enter();
        case TapChange::secureInputBegan:
            return held_.letGo(poster_, input_);
        case TapChange::secureInputStays:
            return log_.line(secureInputLine(session));
        case TapChange::lookAgain:
            break;
    }
    if (!port_ || !isWanted_) return;
    held_.letGoOfReleased(poster_, input_);
    if (!CGEventTapIsEnabled(port_.get())) CGEventTapEnable(port_.get(), true);
}

void MacEventTap::wasSwitchedOff() {
    if (!port_) return;
    if (!AXIsProcessTrusted()) return drop();
    const Clock::time_point now = Clock::now();
    const bool isTooSoon = now - std::exchange(lastSwitchedOff_, now) < kTooSoon;
    if (isWanted_ && !isTooSoon) CGEventTapEnable(port_.get(), true);
}

CGEventRef MacEventTap::decide(CGEventType type, CGEventRef event) {
    const Event came = readEvent(type, event);
    Event left = came;
    const EventVerdict verdict = handler_(left);
    if (verdict == EventVerdict::pass) left = held_.asItWasPressed(came);
    held_.note(came, left, verdict);
    if (verdict == EventVerdict::swallow) return nullptr;
    writeChanges(came, left, event);
    return event;
}

CGEventRef MacEventTap::receive(CGEventTapProxy, CGEventType type, CGEventRef event,
                                void* userInfo) {
    auto& tap = *static_cast<MacEventTap*>(userInfo);
    if (type == kCGEventTapDisabledByTimeout || type == kCGEventTapDisabledByUserInput) {
        tap.wasSwitchedOff();
        return event;
    }
    if ((tap.request_.mask & CGEventMaskBit(type)) == 0) return event;
    // The run loop empties its own pool only for events of the application, which may not come for
    // hours.
    @autoreleasepool {
        return tap.decide(type, event);
    }
}

}  // namespace

std::unique_ptr<EventTap> makeEventTap(EventPoster& poster, const InputState& input, Log& log) {
    return std::make_unique<MacEventTap>(poster, input, log);
}

}  // namespace orvel::macos
