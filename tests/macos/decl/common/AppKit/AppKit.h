// AppKit, as far as the back end uses it.
#pragma once
#include <mac_macros.h>
#import <Foundation/Foundation.h>
#include <ApplicationServices/ApplicationServices.h>

#ifdef __APPLE__
#define MAC_WEAK weak
#else  // No weak references in the runtime of the fakes.
#define MAC_WEAK assign
#endif

@class NSGraphicsContext, NSImage, NSMenu, NSRunningApplication, NSWindow;
@class NSWorkspaceOpenConfiguration;

@interface NSResponder : NSObject
@end

// Events
MAC_ENUM(NSUInteger, NSEventType){
    NSEventTypeLeftMouseUp = 2,
    NSEventTypeRightMouseUp = 4,
    NSEventTypeKeyDown = 10,
    NSEventTypeSystemDefined = 14,
};
MAC_OPTIONS(unsigned long long, NSEventMask){
    NSEventMaskLeftMouseUp = 1ULL << 2,
    NSEventMaskRightMouseUp = 1ULL << 4,
};
MAC_OPTIONS(NSUInteger, NSEventModifierFlags){
    NSEventModifierFlagCapsLock = 1 << 16,
    NSEventModifierFlagShift = 1 << 17,
    NSEventModifierFlagControl = 1 << 18,
    NSEventModifierFlagOption = 1 << 19,
    NSEventModifierFlagCommand = 1 << 20,
};
@interface NSEvent : NSObject
+ (NSEvent*)eventWithCGEvent:(CGEventRef)event;
+ (NSEvent*)otherEventWithType:(NSEventType)type
                      location:(NSPoint)location
                 modifierFlags:(NSEventModifierFlags)flags
                     timestamp:(NSTimeInterval)time
                  windowNumber:(NSInteger)number
                       context:(NSGraphicsContext*)context
                       subtype:(short)subtype
                         data1:(NSInteger)data1
                         data2:(NSInteger)data2;
+ (id)addGlobalMonitorForEventsMatchingMask:(NSEventMask)mask
                                    handler:(void (^)(NSEvent* event))handler;
+ (id)addLocalMonitorForEventsMatchingMask:(NSEventMask)mask
                                   handler:(NSEvent* (^)(NSEvent* event))handler;
+ (void)removeMonitor:(id)monitor;
@property(class, readonly) NSPoint mouseLocation;
@property(readonly) CGEventRef CGEvent;
@property(readonly) NSEventType type;
@property(readonly) NSEventModifierFlags modifierFlags;
@property(readonly) unsigned short keyCode;
@property(readonly) BOOL hasPreciseScrollingDeltas;
@property(readonly) NSWindow* window;
@end

// Applications
MAC_OPTIONS(NSUInteger, NSApplicationActivationOptions){
    NSApplicationActivateAllWindows = 1 << 0,
    NSApplicationActivateIgnoringOtherApps = 1 << 1,
};
MAC_ENUM(NSInteger, NSApplicationActivationPolicy){
    NSApplicationActivationPolicyRegular,
    NSApplicationActivationPolicyAccessory,
    NSApplicationActivationPolicyProhibited,
};
@interface NSRunningApplication : NSObject
+ (instancetype)runningApplicationWithProcessIdentifier:(pid_t)pid;
+ (NSArray<NSRunningApplication*>*)runningApplicationsWithBundleIdentifier:(NSString*)identifier;
@property(readonly) pid_t processIdentifier;
@property(readonly, copy) NSString* bundleIdentifier;
@property(readonly, copy) NSString* localizedName;
@property(readonly, copy) NSURL* bundleURL;
@property(readonly) NSApplicationActivationPolicy activationPolicy;
@property(readonly, getter=isActive) BOOL active;
@property(readonly, getter=isHidden) BOOL hidden;
@property(readonly, getter=isTerminated) BOOL terminated;
- (BOOL)activateWithOptions:(NSApplicationActivationOptions)options;
- (BOOL)terminate;
@end

@interface NSWorkspace : NSObject
@property(class, readonly) NSWorkspace* sharedWorkspace;
@property(readonly) NSNotificationCenter* notificationCenter;
@property(readonly) NSRunningApplication* frontmostApplication;
@property(readonly) BOOL accessibilityDisplayShouldReduceMotion;
@property(readonly) BOOL accessibilityDisplayShouldReduceTransparency;
@property(readonly, copy) NSArray<NSRunningApplication*>* runningApplications;
- (void)openURL:(NSURL*)url
        configuration:(NSWorkspaceOpenConfiguration*)configuration
    completionHandler:(void (^)(NSRunningApplication* application, NSError* error))handler;
- (void)openURLs:(NSArray<NSURL*>*)urls
    withApplicationAtURL:(NSURL*)application
           configuration:(NSWorkspaceOpenConfiguration*)configuration
       completionHandler:(void (^)(NSRunningApplication* application, NSError* error))handler;
- (void)openApplicationAtURL:(NSURL*)url
               configuration:(NSWorkspaceOpenConfiguration*)configuration
           completionHandler:(void (^)(NSRunningApplication* application, NSError* error))handler;
- (NSURL*)URLForApplicationWithBundleIdentifier:(NSString*)identifier;
- (NSImage*)iconForFile:(NSString*)path;
- (BOOL)selectFile:(NSString*)path inFileViewerRootedAtPath:(NSString*)root;
@end
@interface NSWorkspaceOpenConfiguration : NSObject MAC_FAKED(BOOL _activates;)
+ (instancetype)configuration;
@property BOOL activates;
@end
extern "C" {
extern NSString* const NSWorkspaceApplicationKey;
extern NSNotificationName const NSWorkspaceDidActivateApplicationNotification;
extern NSNotificationName const NSWorkspaceDidTerminateApplicationNotification;
extern NSNotificationName const NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification;
extern NSNotificationName const NSWorkspaceDidWakeNotification;
extern NSNotificationName const NSWorkspaceScreensDidWakeNotification;
extern NSNotificationName const NSWorkspaceSessionDidBecomeActiveNotification;
extern NSNotificationName const NSWorkspaceSessionDidResignActiveNotification;
extern NSNotificationName const NSApplicationDidResignActiveNotification;
extern NSNotificationName const NSApplicationWillTerminateNotification;
extern NSNotificationName const NSWindowDidResignKeyNotification;
}

typedef NSString* NSAppearanceName;
extern "C" NSAppearanceName const NSAppearanceNameAqua;
extern "C" NSAppearanceName const NSAppearanceNameDarkAqua;
@interface NSAppearance : NSObject
- (NSAppearanceName)bestMatchFromAppearancesWithNames:(NSArray<NSAppearanceName>*)names;
@end
@class NSApplication;
@protocol NSApplicationDelegate <NSObject>
@optional
- (BOOL)applicationShouldHandleReopen:(NSApplication*)application
                    hasVisibleWindows:(BOOL)hasVisibleWindows;
@end
@interface NSApplication : NSResponder MAC_FAKED(id _delegate;)
@property(MAC_WEAK) id<NSApplicationDelegate> delegate;
@property(readonly, strong) NSAppearance* effectiveAppearance;
@property(class, readonly) __kindof NSApplication* sharedApplication;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy;
- (void)run;
@property(readonly, copy) NSArray<NSWindow*>* windows;
@property(readonly) NSEvent* currentEvent;
- (void)activateIgnoringOtherApps:(BOOL)ignores;
- (void)terminate:(id)sender;
@end
extern "C" __kindof NSApplication* NSApp;

// Views and windows
MAC_OPTIONS(NSUInteger, NSAutoresizingMaskOptions){
    NSViewWidthSizable = 2,
    NSViewHeightSizable = 16,
};
@interface NSView : NSResponder MAC_FAKED(NSRect _frame; NSUInteger _autoresizingMask;
                                          id _subviews; id _superview;)
- (instancetype)initWithFrame:(NSRect)frame;
- (void)addSubview:(NSView*)view;
@property NSRect frame;
@property NSAutoresizingMaskOptions autoresizingMask;
@property(readonly) NSWindow* window;
@property NSRect bounds;
@property(readonly, getter=isFlipped) BOOL flipped;
- (NSRect)convertRect:(NSRect)rect toView:(NSView*)view;
@end
typedef NSString* NSUserInterfaceItemIdentifier;
typedef NSInteger NSWindowLevel;
MAC_OPTIONS(NSUInteger, NSWindowStyleMask){
    NSWindowStyleMaskBorderless = 0,
    NSWindowStyleMaskNonactivatingPanel = 1 << 7,
};
MAC_OPTIONS(NSUInteger, NSWindowCollectionBehavior){
    NSWindowCollectionBehaviorCanJoinAllSpaces = 1 << 0,
    NSWindowCollectionBehaviorStationary = 1 << 4,
    NSWindowCollectionBehaviorIgnoresCycle = 1 << 6,
};
MAC_ENUM(NSUInteger, NSBackingStoreType){NSBackingStoreBuffered = 2};
@interface NSColor : NSObject
@property(class, readonly) NSColor* clearColor;
@end
@interface NSWindow : NSResponder MAC_FAKED(id _identifier; id _contentView; id _backgroundColor;
                                           NSRect _frame; BOOL _isShown; BOOL _opaque;
                                           BOOL _hasShadow; BOOL _acceptsMouseMovedEvents;
                                           BOOL _releasedWhenClosed; BOOL _hidesOnDeactivate;
                                           NSInteger _level; NSUInteger _collectionBehavior;
                                           @public NSUInteger _madeWithStyle; id _firstResponder;)
@property(copy) NSUserInterfaceItemIdentifier identifier;
@property(strong) __kindof NSView* contentView;
- (instancetype)initWithContentRect:(NSRect)rect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backing
                              defer:(BOOL)defers;
@property(readonly) NSRect frame;
@property(readonly, getter=isVisible) BOOL visible;
@property(readonly) BOOL canBecomeKeyWindow;
@property NSWindowLevel level;
@property NSWindowCollectionBehavior collectionBehavior;
@property(getter=isOpaque) BOOL opaque;
@property(copy) NSColor* backgroundColor;
@property BOOL hasShadow;
@property BOOL acceptsMouseMovedEvents;
@property(getter=isReleasedWhenClosed) BOOL releasedWhenClosed;
@property BOOL hidesOnDeactivate;
- (BOOL)makeFirstResponder:(NSResponder*)responder;
- (void)setFrame:(NSRect)frame display:(BOOL)displays;
- (void)setFrameOrigin:(NSPoint)origin;
- (void)makeKeyAndOrderFront:(id)sender;
- (void)orderFrontRegardless;
- (void)orderOut:(id)sender;
- (NSRect)convertRectToScreen:(NSRect)rect;
- (void)close;
@end
@interface NSPanel : NSWindow
@end

@interface NSScreen : NSObject
@property(class, readonly, copy) NSArray<NSScreen*>* screens;
@property(class, readonly) NSScreen* mainScreen;
@property(readonly) NSRect frame;
@property(readonly) NSRect visibleFrame;
@end

// Pictures and the pasteboard
@class NSPasteboard;
@interface NSImage : NSObject
+ (NSImage*)imageNamed:(NSString*)name;
+ (instancetype)imageWithSystemSymbolName:(NSString*)name
                 accessibilityDescription:(NSString*)description;
- (instancetype)initWithContentsOfFile:(NSString*)path;
- (instancetype)initWithPasteboard:(NSPasteboard*)pasteboard;
- (void)setSize:(NSSize)size;
- (void)setTemplate:(BOOL)isTemplate;
@property(readonly, copy) NSData* TIFFRepresentation;
- (CGImageRef)CGImageForProposedRect:(NSRect*)rect
                             context:(NSGraphicsContext*)context
                               hints:(NSDictionary*)hints;
@end

typedef NSString* NSPasteboardType;
extern "C" NSPasteboardType const NSPasteboardTypeString;
extern "C" NSPasteboardType const NSPasteboardTypeFileURL;
@interface NSPasteboard : NSObject
@property(class, readonly) NSPasteboard* generalPasteboard;
@property(readonly) NSInteger changeCount;
@property(readonly, copy) NSArray<NSPasteboardType>* types;
- (NSInteger)clearContents;
- (BOOL)setString:(NSString*)text forType:(NSPasteboardType)type;
- (NSString*)stringForType:(NSPasteboardType)type;
- (BOOL)writeObjects:(NSArray*)objects;
@end

// Status item and menus
@interface NSControl : NSView MAC_FAKED(id _target; SEL _action;)
@property(MAC_WEAK) id target;
@property SEL action;
- (NSInteger)sendActionOn:(NSEventMask)mask;
@end
@interface NSButton : NSControl MAC_FAKED(id _image;)
@property(strong) NSImage* image;
@end
@interface NSStatusBarButton : NSButton
@property BOOL appearsDisabled;
@end
@interface NSStatusItem : NSObject
@property(readonly) NSStatusBarButton* button;
@end
@interface NSStatusBar : NSObject
@property(class, readonly) NSStatusBar* systemStatusBar;
- (NSStatusItem*)statusItemWithLength:(CGFloat)length;
- (void)removeStatusItem:(NSStatusItem*)item;
@end

typedef NSInteger NSControlStateValue;
static const NSControlStateValue NSControlStateValueOff = 0;
static const NSControlStateValue NSControlStateValueOn = 1;
@interface NSMenuItem : NSObject MAC_FAKED(@public id _itemTitle; id _itemKey; SEL _itemAction;
                                         id _target; NSInteger _tag; NSInteger _state; id _image;)
+ (NSMenuItem*)separatorItem;
- (instancetype)initWithTitle:(NSString*)title action:(SEL)action keyEquivalent:(NSString*)key;
@property(MAC_WEAK) id target;
@property NSInteger tag;
@property NSControlStateValue state;
@property(strong) NSImage* image;
@end
@interface NSMenu : NSObject MAC_FAKED(id _items; CGFloat _minimumWidth;)
- (instancetype)initWithTitle:(NSString*)title;
- (void)addItem:(NSMenuItem*)item;
@property CGFloat minimumWidth;
- (BOOL)popUpMenuPositioningItem:(NSMenuItem*)item
                      atLocation:(NSPoint)location
                          inView:(NSView*)view;
@end

// Haptics
MAC_ENUM(NSInteger, NSHapticFeedbackPattern){
    NSHapticFeedbackPatternGeneric = 0,
    NSHapticFeedbackPatternAlignment,
    NSHapticFeedbackPatternLevelChange,
};
MAC_ENUM(NSUInteger, NSHapticFeedbackPerformanceTime){
    NSHapticFeedbackPerformanceTimeDefault = 0,
    NSHapticFeedbackPerformanceTimeNow,
    NSHapticFeedbackPerformanceTimeDrawCompleted,
};
@protocol NSHapticFeedbackPerformer <NSObject>
- (void)performFeedbackPattern:(NSHapticFeedbackPattern)pattern
               performanceTime:(NSHapticFeedbackPerformanceTime)time;
@end
@interface NSHapticFeedbackManager : NSObject
@property(class, readonly) id<NSHapticFeedbackPerformer> defaultPerformer;
@end
