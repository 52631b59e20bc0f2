#include "fake_support.hpp"

#include <map>

@interface FakeEvent : NSObject {
@public
    CGEventType _type;
    CGEventFlags _flags;
    std::map<int, int64_t> _fields;
    bool _isPrecise;
    int _subtype;
    int64_t _data1, _data2;
}
@end
@implementation FakeEvent
@end

/// Also its own run-loop source.
@interface FakeTap : NSObject {
@public
    fake::TapInfo _info;
    CGEventTapCallBack _callBack;
    void* _userInfo;
    bool _isValid;
    bool _isInNormalMode, _isInEveryMode;
}
@end
@implementation FakeTap
@end

namespace {

std::vector<FakeTap*> installed;

FakeEvent* eventFrom(CGEventRef event) { return fake::object(event); }
FakeTap* tapFrom(const void* tap) { return (FakeTap*)(void*)tap; }

FakeEvent* makeEvent(int type, CGEventFlags flags) {
    FakeEvent* event = [[FakeEvent new] autorelease];
    event->_type = static_cast<CGEventType>(type);
    event->_flags = flags;
    return event;
}

bool hears(FakeTap* tap, FakeEvent* event, fake::Mode mode) {
    const bool runs = tap->_isInEveryMode || (tap->_isInNormalMode && mode == fake::Mode::normal);
    return runs && tap->_isValid && tap->_info.isEnabled &&
           (tap->_info.mask & CGEventMaskBit(event->_type)) != 0;
}

/// False when a tap swallows it.
bool send(FakeEvent* event, fake::Mode mode = fake::Mode::normal) {
    const std::vector<FakeTap*> taps = installed;
    for (FakeTap* tap : taps) {
        if (!hears(tap, event, mode)) continue;
        CGEventRef left =
            tap->_callBack(nullptr, event->_type, (CGEventRef)(void*)event, tap->_userInfo);
        if (left == nullptr) return false;
    }
    return true;
}

fake::PostedEvent describe(FakeEvent* event, CGEventTapLocation location) {
    return {.type = static_cast<int>(event->_type),
            .keyCode = static_cast<int>(event->_fields[kCGKeyboardEventKeycode]),
            .flags = event->_flags,
            .userData = event->_fields[kCGEventSourceUserData],
            .location = static_cast<int>(location),
            .subtype = event->_subtype,
            .data1 = event->_data1,
            .data2 = event->_data2};
}

}  // namespace

namespace fake {

std::optional<KeyEvent> sendKey(const KeyEvent& key, Mode mode) {
    @autoreleasepool {
        FakeEvent* event = makeEvent(key.type, key.flags);
        event->_fields[kCGKeyboardEventKeycode] = key.keyCode;
        event->_fields[kCGKeyboardEventAutorepeat] = key.isAutorepeat ? 1 : 0;
        event->_fields[kCGEventSourceUserData] = key.userData;
        if (!send(event, mode)) return std::nullopt;
        return KeyEvent{.type = static_cast<int>(event->_type),
                        .keyCode = static_cast<int>(event->_fields[kCGKeyboardEventKeycode]),
                        .flags = event->_flags,
                        .userData = event->_fields[kCGEventSourceUserData],
                        .isAutorepeat = event->_fields[kCGKeyboardEventAutorepeat] != 0};
    }
}

std::optional<WheelEvent> sendWheel(const WheelEvent& wheel) {
    @autoreleasepool {
        FakeEvent* event = makeEvent(kCGEventScrollWheel, 0);
        event->_fields[kCGScrollWheelEventDeltaAxis1] = wheel.lines;
        event->_fields[kCGScrollWheelEventPointDeltaAxis1] = wheel.pixels;
        event->_fields[kCGScrollWheelEventIsContinuous] = wheel.isContinuous ? 1 : 0;
        event->_isPrecise = wheel.isPrecise;
        if (!send(event)) return std::nullopt;
        return WheelEvent{.lines = event->_fields[kCGScrollWheelEventDeltaAxis1],
                          .pixels = event->_fields[kCGScrollWheelEventPointDeltaAxis1],
                          .isPrecise = wheel.isPrecise,
                          .isContinuous = wheel.isContinuous};
    }
}

bool sendButton(int type, int number) {
    @autoreleasepool {
        FakeEvent* event = makeEvent(type, 0);
        event->_fields[kCGMouseEventButtonNumber] = number;
        return send(event);
    }
}

bool sendSystemDefined() {
    @autoreleasepool {
        return send(makeEvent(NSEventTypeSystemDefined, 0));
    }
}

std::vector<TapInfo> taps() {
    std::vector<TapInfo> infos;
    for (FakeTap* tap : installed) infos.push_back(tap->_info);
    return infos;
}

void switchTapsOff(SwitchOff why) {
    const std::vector<FakeTap*> all = installed;
    for (FakeTap* tap : all) {
        tap->_info.isEnabled = false;
        if (why == SwitchOff::silently) continue;
        const CGEventType type = why == SwitchOff::timeout ? kCGEventTapDisabledByTimeout
                                                           : kCGEventTapDisabledByUserInput;
        tap->_callBack(nullptr, type, nullptr, tap->_userInfo);
    }
}

void resetEvents() { installed.clear(); }

}  // namespace fake

using fake::world;

extern "C" {

bool CGPreflightPostEventAccess(void) {
    return world().session.isTrusted || world().session.trustIsStale;
}

CFMachPortRef CGEventTapCreate(CGEventTapLocation location, CGEventTapPlacement placement,
                               CGEventTapOptions options, CGEventMask mask,
                               CGEventTapCallBack callBack, void* userInfo) {
    // The wish for keys takes the permission, and a tap that is left with no wish is not made.
    if (!world().session.isTrusted && (mask & CGEventMaskBit(kCGEventKeyDown)) != 0) return nullptr;
    FakeTap* tap = [[FakeTap new] autorelease];
    tap->_info = {.location = static_cast<int>(location),
                  .placement = static_cast<int>(placement),
                  .options = static_cast<int>(options),
                  .mask = mask,
                  .isEnabled = true};
    tap->_callBack = callBack;
    tap->_userInfo = userInfo;
    tap->_isValid = true;
    // Taps hear events in the order of their places, the newest at the head first.
    const bool isAtHead = placement == kCGHeadInsertEventTap;
    installed.insert(isAtHead ? installed.begin() : installed.end(), [tap retain]);
    return fake::give<CFMachPortRef>(tap);
}
CGError CGGetEventTapList(uint32_t most, CGEventTapInformation* list, uint32_t* count) {
    *count = 0;
    for (FakeTap* tap : installed) {
        if (*count == most) break;
        list[(*count)++] = {.eventsOfInterest = tap->_info.mask,
                            .tappingProcess = getpid(),
                            .enabled = tap->_info.isEnabled};
    }
    return kCGErrorSuccess;
}
void CGEventTapEnable(CFMachPortRef tap, bool enable) { tapFrom(tap)->_info.isEnabled = enable; }
bool CGEventTapIsEnabled(CFMachPortRef tap) { return tapFrom(tap)->_info.isEnabled; }
CFRunLoopSourceRef CFMachPortCreateRunLoopSource(CFAllocatorRef, CFMachPortRef tap, CFIndex) {
    return fake::give<CFRunLoopSourceRef>(tapFrom(tap));
}
void CFMachPortInvalidate(CFMachPortRef tap) {
    tapFrom(tap)->_isValid = false;
    std::erase(installed, tapFrom(tap));
}
void CFRunLoopAddSource(CFRunLoopRef, CFRunLoopSourceRef source, CFRunLoopMode mode) {
    const bool isEvery = CFEqual(mode, kCFRunLoopCommonModes);
    (isEvery ? tapFrom(source)->_isInEveryMode : tapFrom(source)->_isInNormalMode) = true;
}
void CFRunLoopRemoveSource(CFRunLoopRef, CFRunLoopSourceRef source, CFRunLoopMode) {
    tapFrom(source)->_isInEveryMode = false;
    tapFrom(source)->_isInNormalMode = false;
}

CGEventSourceRef CGEventSourceCreate(CGEventSourceStateID) {
    return fake::give<CGEventSourceRef>([[NSObject new] autorelease]);
}
CGEventFlags CGEventSourceFlagsState(CGEventSourceStateID state) {
    // Only the hardware's own table is untouched by what was posted.
    return state == kCGEventSourceStateHIDSystemState ? world().hidFlags : 0;
}
bool CGEventSourceKeyState(CGEventSourceStateID state, CGKeyCode key) {
    return state == kCGEventSourceStateHIDSystemState && world().keysDown.contains(key);
}

CGEventRef CGEventCreateKeyboardEvent(CGEventSourceRef, CGKeyCode key, bool isDown) {
    if (!world().eventsCanBeCreated) return nullptr;
    FakeEvent* event = makeEvent(isDown ? kCGEventKeyDown : kCGEventKeyUp, world().hidFlags);
    event->_fields[kCGKeyboardEventKeycode] = key;
    return fake::give<CGEventRef>(event);
}
void CGEventSetType(CGEventRef event, CGEventType type) { eventFrom(event)->_type = type; }
CGEventFlags CGEventGetFlags(CGEventRef event) { return eventFrom(event)->_flags; }
void CGEventSetFlags(CGEventRef event, CGEventFlags flags) { eventFrom(event)->_flags = flags; }
int64_t CGEventGetIntegerValueField(CGEventRef event, CGEventField field) {
    return eventFrom(event)->_fields[field];
}
void CGEventSetIntegerValueField(CGEventRef event, CGEventField field, int64_t value) {
    auto& fields = eventFrom(event)->_fields;
    fields[field] = value;
    // The system computes the pixels of a wheel from its lines.
    if (field == kCGScrollWheelEventDeltaAxis1)
        fields[kCGScrollWheelEventPointDeltaAxis1] = value * 10;
}
void CGEventPost(CGEventTapLocation location, CGEventRef event) {
    world().posted.push_back(describe(eventFrom(event), location));
}

UInt32 CGDisplayIsAsleep(CGDirectDisplayID) { return world().session.isDisplayAsleep; }
CGDirectDisplayID CGMainDisplayID(void) { return 1; }
}

/// An event as AppKit sees it.
@interface FakeAppEvent : NSEvent {
@public
    FakeEvent* _event;
    NSEventType _appType;
    unsigned short _keyCode;
    NSWindow* _window;
}
@end

namespace {

std::vector<id> globalMonitors, localMonitors;

}  // namespace

@interface FakeMonitor : NSObject {
@public
    NSEventMask _mask;
    void (^_global)(NSEvent*);
    NSEvent* (^_local)(NSEvent*);
}
@end
@implementation FakeMonitor
@end

@implementation NSEvent
+ (NSEvent*)eventWithCGEvent:(CGEventRef)event {
    FakeAppEvent* made = [[FakeAppEvent new] autorelease];
    made->_event = eventFrom(event);
    return made;
}
+ (NSEvent*)otherEventWithType:(NSEventType)type
                      location:(NSPoint)location
                 modifierFlags:(NSEventModifierFlags)flags
                     timestamp:(NSTimeInterval)time
                  windowNumber:(NSInteger)number
                       context:(NSGraphicsContext*)context
                       subtype:(short)subtype
                         data1:(NSInteger)data1
                         data2:(NSInteger)data2 {
    if (!world().eventsCanBeCreated) return nil;
    FakeEvent* event = makeEvent(static_cast<int>(type), flags);
    event->_subtype = subtype;
    event->_data1 = data1;
    event->_data2 = data2;
    FakeAppEvent* made = [[FakeAppEvent new] autorelease];
    made->_event = [event retain];
    return made;
}
+ (NSPoint)mouseLocation {
    return NSMakePoint(world().pointerX, world().pointerY);
}
+ (id)addGlobalMonitorForEventsMatchingMask:(NSEventMask)mask handler:(void (^)(NSEvent*))handler {
    FakeMonitor* monitor = [FakeMonitor new];
    monitor->_mask = mask;
    monitor->_global = [handler copy];
    globalMonitors.push_back(monitor);
    ++world().monitors;
    return monitor;
}
+ (id)addLocalMonitorForEventsMatchingMask:(NSEventMask)mask
                                   handler:(NSEvent* (^)(NSEvent*))handler {
    FakeMonitor* monitor = [FakeMonitor new];
    monitor->_mask = mask;
    monitor->_local = [handler copy];
    localMonitors.push_back(monitor);
    ++world().monitors;
    return monitor;
}
+ (void)removeMonitor:(id)monitor {
    world().monitors -=
        static_cast<int>(std::erase(globalMonitors, monitor) + std::erase(localMonitors, monitor));
}
- (CGEventRef)CGEvent {
    return (CGEventRef)(void*)((FakeAppEvent*)self)->_event;
}
- (BOOL)hasPreciseScrollingDeltas {
    return ((FakeAppEvent*)self)->_event->_isPrecise;
}
- (NSEventType)type {
    return ((FakeAppEvent*)self)->_appType;
}
- (NSEventModifierFlags)modifierFlags {
    return ((FakeAppEvent*)self)->_event->_flags;
}
- (unsigned short)keyCode {
    // As the system does for events that have no key.
    if (self.type != NSEventTypeKeyDown) {
        [NSException raise:NSInternalInconsistencyException format:@"no key in this event"];
    }
    return ((FakeAppEvent*)self)->_keyCode;
}
- (NSWindow*)window {
    return ((FakeAppEvent*)self)->_window;
}
@end
@implementation FakeAppEvent
@end

namespace fake {

bool sendToMonitors(bool isLocal, int type, int keyCode, const void* window) {
    @autoreleasepool {
        FakeAppEvent* event = [[FakeAppEvent new] autorelease];
        event->_event = makeEvent(type, 0);
        event->_appType = static_cast<NSEventType>(type);
        event->_keyCode = static_cast<unsigned short>(keyCode);
        event->_window = (NSWindow*)(void*)window;
        const std::vector<id> monitors = isLocal ? localMonitors : globalMonitors;
        for (FakeMonitor* monitor : monitors) {
            if ((monitor->_mask & (1ULL << type)) == 0) continue;
            if (!isLocal) monitor->_global(event);
            if (isLocal && monitor->_local(event) == nil) return false;
        }
        return true;
    }
}

NSEvent* makeClick(int type, std::uint64_t flags) {
    FakeAppEvent* event = [[FakeAppEvent new] autorelease];
    event->_event = [makeEvent(type, flags) retain];
    event->_appType = static_cast<NSEventType>(type);
    return event;
}

void resetMonitors() {
    globalMonitors.clear();
    localMonitors.clear();
}

}  // namespace fake
