// Foundation, as far as the back end uses it. The run over fakes takes GNUstep's instead.
#pragma once
#include <CoreGraphics/CoreGraphics.h>
#include <objc/objc.h>

typedef long NSInteger;
typedef unsigned long NSUInteger;
typedef double NSTimeInterval;
typedef CGPoint NSPoint;
typedef CGSize NSSize;
typedef CGRect NSRect;
static const NSPoint NSZeroPoint = {0, 0};
static inline NSPoint NSMakePoint(CGFloat x, CGFloat y) { return CGPointMake(x, y); }
static inline NSSize NSMakeSize(CGFloat width, CGFloat height) { return CGSizeMake(width, height); }
static inline NSRect NSMakeRect(CGFloat x, CGFloat y, CGFloat width, CGFloat height) {
    return {CGPointMake(x, y), CGSizeMake(width, height)};
}
typedef struct {
    NSUInteger location;
    NSUInteger length;
} NSRange;
static const NSInteger NSNotFound = 0x7fffffffffffffffL;
typedef struct {
    unsigned long state;
    __unsafe_unretained id* itemsPtr;
    unsigned long* mutationsPtr;
    unsigned long extra[5];
} NSFastEnumerationState;

@class NSArray<__covariant ObjectType>;
@class NSDictionary<__covariant KeyType, __covariant ObjectType>;
@class NSError, NSNotification, NSOperationQueue, NSString, NSURL;

@protocol NSObject
- (instancetype)self;
- (Class)class;
- (BOOL)isKindOfClass:(Class)wanted;
@property(readonly, copy) NSString* description;
@end
@protocol NSCopying
- (id)copyWithZone:(struct _NSZone*)zone;
@end
@protocol NSFastEnumeration
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained[])buffer
                                    count:(NSUInteger)length;
@end
__attribute__((objc_root_class)) @interface NSObject <NSObject>
+ (instancetype)alloc;
+ (Class)class;
- (instancetype)init;
- (id)copy;
@end

typedef NSString* NSNotificationName;

@interface NSString : NSObject <NSCopying>
+ (instancetype)stringWithUTF8String:(const char*)bytes;
- (NSRange)rangeOfString:(NSString*)text;
- (BOOL)isEqualToString:(NSString*)text;
@end

@interface NSNumber : NSObject <NSCopying>
+ (NSNumber*)numberWithBool:(BOOL)value;
@end

@interface NSArray<__covariant ObjectType> : NSObject <NSCopying, NSFastEnumeration>
+ (instancetype)arrayWithObjects:(const ObjectType[])objects count:(NSUInteger)count;
@property(readonly) NSUInteger count;
@property(readonly) ObjectType firstObject;
- (BOOL)containsObject:(ObjectType)object;
@end

@interface NSMutableArray<ObjectType> : NSArray <ObjectType>
+ (instancetype)array;
- (void)addObject:(ObjectType)object;
@end

@interface NSDictionary<__covariant KeyType, __covariant ObjectType>
    : NSObject <NSCopying, NSFastEnumeration>
+ (instancetype)dictionaryWithObjects:(const ObjectType[])objects
                              forKeys:(const id<NSCopying>[])keys
                                count:(NSUInteger)count;
- (ObjectType)objectForKey:(KeyType)key;
@end

@interface NSMutableDictionary<KeyType, ObjectType> : NSDictionary <KeyType, ObjectType>
+ (instancetype)dictionary;
- (void)setObject:(ObjectType)object forKey:(KeyType<NSCopying>)key;
@end

@interface NSData : NSObject
+ (instancetype)dataWithBytes:(const void*)bytes length:(NSUInteger)length;
+ (instancetype)dataWithContentsOfFile:(NSString*)path;
@property(readonly) NSUInteger length;
@property(readonly) const void* bytes;
@end

@interface NSError : NSObject
@property(readonly, copy) NSString* localizedDescription;
@end

@interface NSURL : NSObject <NSCopying>
+ (NSURL*)fileURLWithPath:(NSString*)path;
+ (instancetype)URLWithString:(NSString*)text;
@property(readonly, copy) NSString* path;
@end

@interface NSOperationQueue : NSObject
@property(class, readonly) NSOperationQueue* mainQueue;
@end

@interface NSNotification : NSObject
@property(readonly) id object;
@property(readonly, copy) NSDictionary* userInfo;
@end

@interface NSNotificationCenter : NSObject
@property(class, readonly) NSNotificationCenter* defaultCenter;
- (id<NSObject>)addObserverForName:(NSNotificationName)name
                            object:(id)object
                             queue:(NSOperationQueue*)queue
                        usingBlock:(void (^)(NSNotification* notification))block;
- (void)removeObserver:(id)observer;
@end

@interface NSDistributedNotificationCenter : NSNotificationCenter
+ (NSDistributedNotificationCenter*)defaultCenter;
- (void)postNotificationName:(NSNotificationName)name
                      object:(NSString*)object
                    userInfo:(NSDictionary*)userInfo
          deliverImmediately:(BOOL)deliversImmediately;
@end

@interface NSUserDefaults : NSObject
@property(class, readonly) NSUserDefaults* standardUserDefaults;
- (instancetype)initWithSuiteName:(NSString*)name;
- (BOOL)synchronize;
- (id)objectForKey:(NSString*)key;
- (void)setObject:(id)value forKey:(NSString*)key;
- (void)removeObjectForKey:(NSString*)key;
@end

MAC_ENUM(NSUInteger, NSPropertyListFormat){
    NSPropertyListXMLFormat_v1_0 = 100,
    NSPropertyListBinaryFormat_v1_0 = 200,
};
MAC_OPTIONS(NSUInteger, NSPropertyListMutabilityOptions){
    NSPropertyListImmutable = 0,
};
typedef NSPropertyListMutabilityOptions NSPropertyListReadOptions;
typedef NSUInteger NSPropertyListWriteOptions;
@interface NSPropertyListSerialization : NSObject
+ (id)propertyListWithData:(NSData*)data
                   options:(NSPropertyListReadOptions)options
                    format:(NSPropertyListFormat*)format
                     error:(NSError**)error;
+ (NSData*)dataWithPropertyList:(id)list
                         format:(NSPropertyListFormat)format
                        options:(NSPropertyListWriteOptions)options
                          error:(NSError**)error;
@end

struct AEDesc;
@interface NSAppleEventDescriptor : NSObject
+ (NSAppleEventDescriptor*)descriptorWithBundleIdentifier:(NSString*)identifier;
@property(readonly) const AEDesc* aeDesc;
@property(readonly, copy) NSString* stringValue;
@end
@interface NSAppleScript : NSObject
- (instancetype)initWithSource:(NSString*)source;
- (NSAppleEventDescriptor*)executeAndReturnError:(NSDictionary<NSString*, id>**)error;
@end

@interface NSFileHandle : NSObject
- (NSData*)readDataToEndOfFile;
@end
@interface NSPipe : NSObject
+ (NSPipe*)pipe;
@property(readonly) NSFileHandle* fileHandleForReading;
@end
@interface NSTask : NSObject
@property(copy) NSURL* executableURL;
@property(copy) NSArray<NSString*>* arguments;
@property(strong) id standardOutput;
@property(strong) id standardError;
- (BOOL)launchAndReturnError:(NSError**)error;
- (void)waitUntilExit;
@end

MAC_OPTIONS(unsigned long long, NSActivityOptions){
    NSActivityIdleSystemSleepDisabled = 1ULL << 20,
    NSActivityUserInitiated = 0x00FFFFFFULL | NSActivityIdleSystemSleepDisabled,
    NSActivityUserInitiatedAllowingIdleSystemSleep =
        NSActivityUserInitiated & ~NSActivityIdleSystemSleepDisabled,
};
@interface NSProcessInfo : NSObject
@property(class, readonly) NSProcessInfo* processInfo;
- (id<NSObject>)beginActivityWithOptions:(NSActivityOptions)options reason:(NSString*)reason;
- (void)endActivity:(id<NSObject>)activity;
@end

@interface NSBundle : NSObject
@property(class, readonly) NSBundle* mainBundle;
@property(readonly, copy) NSString* bundleIdentifier;
@end

@interface NSFileManager : NSObject
@property(class, readonly) NSFileManager* defaultManager;
- (BOOL)fileExistsAtPath:(NSString*)path;
- (NSString*)displayNameAtPath:(NSString*)path;
@end

MAC_ENUM(NSUInteger, NSSearchPathDirectory){NSCachesDirectory = 13};
MAC_OPTIONS(NSUInteger, NSSearchPathDomainMask){NSUserDomainMask = 1};
extern "C" {
NSString* NSHomeDirectory(void);
NSString* NSTemporaryDirectory(void);
NSString* NSStringFromClass(Class);
NSArray<NSString*>* NSSearchPathForDirectoriesInDomains(NSSearchPathDirectory,
                                                        NSSearchPathDomainMask, BOOL);
}

static inline CFTypeRef CFBridgingRetain(id object) { return (__bridge_retained CFTypeRef)object; }

#include <dispatch/dispatch.h>
