#include "fake_support.hpp"

using fake::world;

namespace {

std::map<fake::Center, NSNotificationCenter*> centers;

}  // namespace

/// Delivers on the thread that posts; the kept block is a copy, which GNUstep's own is not.
@interface FakeObserver : NSObject {
@public
    void (^_block)(NSNotification*);
}
- (void)receive:(NSNotification*)notification;
@end
@implementation FakeObserver
- (void)receive:(NSNotification*)notification {
    _block(notification);
}
@end

@implementation NSNotificationCenter (KeepsBlocks)
- (id)addObserverForName:(NSString*)name
                  object:(id)object
                   queue:(NSOperationQueue*)queue
              usingBlock:(void (^)(NSNotification*))block {
    FakeObserver* observer = [FakeObserver new];
    observer->_block = [block copy];
    [self addObserver:observer selector:@selector(receive:) name:name object:object];
    return observer;
}
@end
@implementation FakeDistributedCenter
+ (NSNotificationCenter*)defaultCenter {
    return fake::centerOf(fake::Center::distributed);
}
- (void)postNotificationName:(NSNotificationName)name
                      object:(NSString*)object
                    userInfo:(NSDictionary*)userInfo
          deliverImmediately:(BOOL)deliversImmediately {
    // Without this a program that is not in front hears nothing.
    if (deliversImmediately) world().broadcasts.push_back(fake::bytes(name));
    if (deliversImmediately) [self postNotificationName:name object:object userInfo:userInfo];
}
@end
@implementation NSProcessInfo (MissingHere)
- (id)beginActivityWithOptions:(NSActivityOptions)options reason:(NSString*)reason {
    NSNumber* activity = [NSNumber numberWithUnsignedLongLong:options];
    world().activities.push_back(options);
    return activity;
}
- (void)endActivity:(id)activity {
    std::erase(world().activities, [activity unsignedLongLongValue]);
}
@end
@implementation NSOperationQueue (MissingHere)
+ (NSOperationQueue*)mainQueue {
    return nil;
}
@end

namespace fake {

NSNotificationCenter* centerOf(Center center) {
    if (center == Center::application) return [NSNotificationCenter defaultCenter];
    NSNotificationCenter*& made = centers[center];
    if (made == nil) made = [FakeDistributedCenter new];
    return made;
}

void postNotification(Center center, const std::string& name, const void* sender,
                      const std::map<std::string, const void*>& userInfo) {
    @autoreleasepool {
        NSMutableDictionary* info = [NSMutableDictionary dictionary];
        for (const auto& [key, value] : userInfo) [info setObject:object(value) forKey:text(key)];
        [centerOf(center) postNotificationName:text(name) object:object(sender) userInfo:info];
    }
}

void resetNotifications() { centers.clear(); }

}  // namespace fake

extern "C" {

NSNotificationName const NSWorkspaceDidActivateApplicationNotification =
    @"NSWorkspaceDidActivateApplicationNotification";
NSNotificationName const NSWorkspaceDidTerminateApplicationNotification =
    @"NSWorkspaceDidTerminateApplicationNotification";
NSNotificationName const NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification =
    @"NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification";
NSNotificationName const NSWorkspaceDidWakeNotification = @"NSWorkspaceDidWakeNotification";
NSNotificationName const NSWorkspaceScreensDidWakeNotification =
    @"NSWorkspaceScreensDidWakeNotification";
NSNotificationName const NSWorkspaceSessionDidBecomeActiveNotification =
    @"NSWorkspaceSessionDidBecomeActiveNotification";
NSNotificationName const NSWorkspaceSessionDidResignActiveNotification =
    @"NSWorkspaceSessionDidResignActiveNotification";
NSNotificationName const NSApplicationDidResignActiveNotification =
    @"NSApplicationDidResignActiveNotification";
NSNotificationName const NSWindowDidResignKeyNotification = @"NSWindowDidResignKeyNotification";
NSString* const NSWorkspaceApplicationKey = @"NSWorkspaceApplicationKey";

CFStringRef kAXTrustedCheckOptionPrompt = CFSTR("AXTrustedCheckOptionPrompt");
Boolean AXIsProcessTrusted(void) {
    return world().session.isTrusted || world().session.trustIsStale;
}
Boolean AXIsProcessTrustedWithOptions(CFDictionaryRef options) {
    const void* prompts = CFDictionaryGetValue(options, kAXTrustedCheckOptionPrompt);
    if (prompts != nullptr && [fake::object(prompts) boolValue] && !world().session.isTrusted) {
        ++world().trustPrompts;
    }
    return AXIsProcessTrusted();
}

Boolean IsSecureEventInputEnabled(void) { return world().session.isSecureInput; }
CFDictionaryRef CGSessionCopyCurrentDictionary(void) {
    ++world().slowCalls;
    const fake::Session& session = world().session;
    NSMutableDictionary* told = [NSMutableDictionary dictionary];
    [told setObject:[NSNumber numberWithBool:session.isOnConsole]
             forKey:@"kCGSSessionOnConsoleKey"];
    if (session.isLocked) {
        [told setObject:[NSNumber numberWithBool:YES] forKey:@"CGSSessionScreenIsLocked"];
    }
    if (session.isSecureInput) {
        [told setObject:[NSNumber numberWithInt:session.secureInputOwner]
                 forKey:@"kCGSSessionSecureInputPID"];
    }
    return fake::give<CFDictionaryRef>(told);
}
}
