#include "platform/event_poster.hpp"
#include "platform/macos/mac_cf_ref.hpp"
#include "platform/macos/mac_factories.hpp"

#import <AppKit/AppKit.h>

#include <vector>

namespace orvel::macos {

namespace {

using EventRef = CfRef<CGEventRef>;

void mark(CGEventRef event, std::int64_t userData) {
    CGEventSetIntegerValueField(event, kCGEventSourceUserData, userData);
}

void post(const std::vector<EventRef>& events) {
    for (const EventRef& event : events) CGEventPost(kCGHIDEventTap, event.get());
}

EventRef keyEvent(CGEventSourceRef source, const PostedKey& key) {
    EventRef event(CGEventCreateKeyboardEvent(source, static_cast<CGKeyCode>(key.keyCode),
                                              key.type == EventType::keyDown));
    if (!event) return event;
    if (key.type == EventType::flagsChanged) CGEventSetType(event.get(), kCGEventFlagsChanged);
    if (key.flags) CGEventSetFlags(event.get(), *key.flags);
    mark(event.get(), key.userData);
    return event;
}

EventRef mediaKeyEvent(const PostedMediaKey& key) {
    NSEvent* event = [NSEvent otherEventWithType:NSEventTypeSystemDefined
                                        location:NSZeroPoint
                                   modifierFlags:static_cast<NSEventModifierFlags>(key.flags)
                                       timestamp:0
                                    windowNumber:0
                                         context:nil
                                         subtype:static_cast<short>(key.subtype)
                                           data1:key.data1
                                           data2:key.data2];
    EventRef quartz = EventRef::retaining(event.CGEvent);
    if (quartz) mark(quartz.get(), key.userData);
    return quartz;
}

class MacEventPoster final : public EventPoster {
public:
    bool postKeys(EventSourceState source, std::span<const PostedKey> keys) override {
        const CfRef<CGEventSourceRef> from(
            CGEventSourceCreate(static_cast<CGEventSourceStateID>(source)));
        if (!from) return false;
        std::vector<EventRef> events;
        for (const PostedKey& key : keys) {
            events.push_back(keyEvent(from.get(), key));
            if (!events.back()) return false;
        }
        return postUnlessAsleep(events);
    }

    bool postMediaKeys(std::span<const PostedMediaKey> keys) override {
        @autoreleasepool {
            std::vector<EventRef> events;
            for (const PostedMediaKey& key : keys) {
                events.push_back(mediaKeyEvent(key));
                if (!events.back()) return false;
            }
            return postUnlessAsleep(events);
        }
    }

private:
    /// A posted event counts as activity of a person and would wake a machine that goes to sleep.
    static bool postUnlessAsleep(const std::vector<EventRef>& events) {
        if (CGDisplayIsAsleep(CGMainDisplayID())) return false;
        post(events);
        return true;
    }
};

}  // namespace

std::unique_ptr<EventPoster> makeEventPoster() { return std::make_unique<MacEventPoster>(); }

}  // namespace orvel::macos
