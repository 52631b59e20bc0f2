// The Foundation of the fakes: GNUstep's, and what it lacks.
#pragma once
#include_next <Foundation/Foundation.h>
#include <CoreGraphics/CoreGraphics.h>
#include <dispatch/dispatch.h>

// The runtime of the fakes has no weak references.
#undef __weak
#define __weak __unsafe_unretained

static inline CFTypeRef CFBridgingRetain(id object) { return CFRetain((CFTypeRef)(void*)object); }

@interface NSOperationQueue (MissingHere)
+ (NSOperationQueue*)mainQueue;
@end
@interface NSProcessInfo (MissingHere)
- (id)beginActivityWithOptions:(NSActivityOptions)options reason:(NSString*)reason;
- (void)endActivity:(id)activity;
@end
struct AEDesc;
@interface NSAppleEventDescriptor (MissingHere)
+ (NSAppleEventDescriptor*)descriptorWithBundleIdentifier:(NSString*)identifier;
- (const AEDesc*)aeDesc;
- (NSString*)stringValue;
@end
@interface NSUserDefaults (MissingHere)
- (instancetype)initWithSuiteName:(NSString*)name;
@end
@interface FakeScript : NSObject {
    NSString* _source;
}
- (instancetype)initWithSource:(NSString*)source;
- (NSAppleEventDescriptor*)executeAndReturnError:(NSDictionary**)error;
@end
#define NSAppleScript FakeScript
@interface NSTask (MissingHere)
@property(copy) NSURL* executableURL;
- (BOOL)launchAndReturnError:(NSError**)error;
@end

// GNUstep's centre for all programs wants a daemon: one in this process instead.
@interface FakeDistributedCenter : NSNotificationCenter
- (void)postNotificationName:(NSNotificationName)name
                      object:(NSString*)object
                    userInfo:(NSDictionary*)userInfo
          deliverImmediately:(BOOL)deliversImmediately;
@end
#define NSDistributedNotificationCenter FakeDistributedCenter
