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
@interface NSAppleEventDescriptor (MissingHere)
- (NSString*)stringValue;
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
@end
#define NSDistributedNotificationCenter FakeDistributedCenter
