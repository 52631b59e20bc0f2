#include "platform/macos/mac_session.hpp"

#import <AppKit/AppKit.h>
#import <ApplicationServices/ApplicationServices.h>
#import <Carbon/Carbon.h>

namespace orvel::macos {

namespace {

bool isTrue(CFDictionaryRef dictionary, CFStringRef key, bool whenAbsent) {
    const CFTypeRef value = CFDictionaryGetValue(dictionary, key);
    if (value == nullptr || CFGetTypeID(value) != CFBooleanGetTypeID()) return whenAbsent;
    return CFBooleanGetValue(static_cast<CFBooleanRef>(value));
}

std::optional<ProcessId> processId(CFDictionaryRef dictionary, CFStringRef key) {
    const CFTypeRef value = CFDictionaryGetValue(dictionary, key);
    if (value == nullptr || CFGetTypeID(value) != CFNumberGetTypeID()) return std::nullopt;
    ProcessId pid = 0;
    CFNumberGetValue(static_cast<CFNumberRef>(value), kCFNumberSInt32Type, &pid);
    return pid;
}

}  // namespace

SessionState readSession() {
    SessionState state;
    state.isSecureInput = IsSecureEventInputEnabled();
    const CfRef<CFDictionaryRef> session(CGSessionCopyCurrentDictionary());
    if (!session) return state;
    state.isInFront = isTrue(session.get(), kCGSessionOnConsoleKey, true);
    state.isLocked = isTrue(session.get(), CFSTR("CGSSessionScreenIsLocked"), false);
    if (state.isSecureInput) {
        state.secureInputOwner = processId(session.get(), CFSTR("kCGSSessionSecureInputPID"));
    }
    return state;
}

bool isTypingSecret() {
    const SessionState session = readSession();
    return session.isSecureInput || session.isLocked;
}

SessionNotices::SessionNotices(std::function<void()> told) {
    const auto observe = [&](NoticeCenter center, CFStringRef name) {
        observations_.emplace_back(center, name, [told](CFTypeRef) { told(); });
    };
    for (NSString* name in @[
             NSWorkspaceDidWakeNotification, NSWorkspaceScreensDidWakeNotification,
             NSWorkspaceSessionDidBecomeActiveNotification,
             NSWorkspaceSessionDidResignActiveNotification
         ]) {
        observe(NoticeCenter::workspace, (__bridge CFStringRef)name);
    }
    observe(NoticeCenter::distributed, CFSTR("com.apple.screenIsLocked"));
    observe(NoticeCenter::distributed, CFSTR("com.apple.screenIsUnlocked"));
    observe(NoticeCenter::distributed, CFSTR("com.apple.accessibility.api"));
}

}  // namespace orvel::macos
