#include "fake_support.hpp"

#include <deque>

namespace fake {
std::string nameOf(NSImage* image);
NSEvent* makeClick(int type, std::uint64_t flags);
void resetMonitors();
}  // namespace fake

namespace {

using fake::world;

NSMutableArray* windows;
std::vector<const void*> closed;
NSEvent* currentEvent;
NSStatusItem* statusItem;

constexpr CGFloat kButtonWidth = 30;
constexpr CGFloat kButtonHeight = 25;

}  // namespace

@implementation NSResponder
@end

@implementation NSView
@synthesize frame = _frame;
@synthesize autoresizingMask = _autoresizingMask;
- (instancetype)initWithFrame:(NSRect)frame {
    self = [super init];
    _frame = frame;
    return self;
}
- (void)addSubview:(NSView*)view {
    if (_subviews == nil) _subviews = [NSMutableArray new];
    [_subviews addObject:view];
    view->_superview = self;
}
- (void)setFrame:(NSRect)frame {
    const CGFloat wider = frame.size.width - _frame.size.width;
    const CGFloat higher = frame.size.height - _frame.size.height;
    _frame = frame;
    for (NSView* view in [NSArray arrayWithArray:_subviews]) {
        NSRect inside = view.frame;
        if ((view.autoresizingMask & NSViewWidthSizable) != 0) inside.size.width += wider;
        if ((view.autoresizingMask & NSViewHeightSizable) != 0) inside.size.height += higher;
        view.frame = inside;
    }
}
- (NSRect)bounds {
    return NSMakeRect(0, 0, self.frame.size.width, self.frame.size.height);
}
- (void)setBounds:(NSRect)bounds {
}
- (NSWindow*)window {
    return nil;
}
- (BOOL)isFlipped {
    return NO;
}
- (NSRect)convertRect:(NSRect)rect toView:(NSView*)view {
    return rect;
}
@end
@implementation NSControl
@synthesize target = _target, action = _action;
- (NSInteger)sendActionOn:(NSEventMask)mask {
    // Both buttons, when they are let go.
    if (mask != (NSEventMaskLeftMouseUp | NSEventMaskRightMouseUp)) {
        [NSException raise:NSInvalidArgumentException format:@"other events than expected"];
    }
    return 0;
}
@end
@implementation NSButton
@synthesize image = _image;
@end
@implementation NSStatusBarButton
- (BOOL)appearsDisabled {
    return world().statusItemLooksPaused;
}
- (void)setAppearsDisabled:(BOOL)disabled {
    world().statusItemLooksPaused = disabled;
}
- (void)setImage:(NSImage*)image {
    world().statusItemImage = fake::nameOf(image);
}
- (NSWindow*)window {
    static NSWindow* menuBar = [NSWindow new];
    return menuBar;
}
- (NSRect)bounds {
    return NSMakeRect(0, 0, kButtonWidth, kButtonHeight);
}
- (BOOL)isFlipped {
    return YES;
}
@end
@interface FakeStatusItem : NSStatusItem {
@public
    NSStatusBarButton* _made;
}
@end
@implementation NSStatusItem
- (NSStatusBarButton*)button {
    return ((FakeStatusItem*)self)->_made;
}
@end
@implementation FakeStatusItem
@end
@implementation NSStatusBar
+ (NSStatusBar*)systemStatusBar {
    static NSStatusBar* bar = [NSStatusBar new];
    return bar;
}
- (NSStatusItem*)statusItemWithLength:(CGFloat)length {
    FakeStatusItem* item = [[FakeStatusItem new] autorelease];
    item->_made = [NSStatusBarButton new];
    statusItem = [item retain];
    ++world().statusItems;
    return item;
}
- (void)removeStatusItem:(NSStatusItem*)item {
    --world().statusItems;
    statusItem = nil;
}
@end

@implementation NSWindow
@synthesize identifier = _identifier;
@synthesize level = _level;
@synthesize collectionBehavior = _collectionBehavior;
@synthesize opaque = _opaque;
@synthesize backgroundColor = _backgroundColor;
@synthesize hasShadow = _hasShadow;
@synthesize acceptsMouseMovedEvents = _acceptsMouseMovedEvents;
@synthesize releasedWhenClosed = _releasedWhenClosed;
@synthesize hidesOnDeactivate = _hidesOnDeactivate;
- (instancetype)initWithContentRect:(NSRect)rect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backing
                              defer:(BOOL)defers {
    self = [super init];
    _frame = rect;
    _madeWithStyle = style;
    [windows addObject:self];
    return self;
}
- (NSView*)contentView {
    return _contentView;
}
- (void)setContentView:(NSView*)view {
    _contentView = [view retain];
    view.frame = NSMakeRect(0, 0, _frame.size.width, _frame.size.height);
}
- (BOOL)makeFirstResponder:(NSResponder*)responder {
    _firstResponder = responder;
    return YES;
}
- (NSRect)frame {
    return _frame;
}
- (BOOL)isVisible {
    return _isShown;
}
- (BOOL)canBecomeKeyWindow {
    return NO;
}
- (void)setFrame:(NSRect)frame display:(BOOL)displays {
    _frame = frame;
    [_contentView setFrame:NSMakeRect(0, 0, frame.size.width, frame.size.height)];
}
- (void)setFrameOrigin:(NSPoint)origin {
    _frame.origin = origin;
}
- (void)makeKeyAndOrderFront:(id)sender {
    _isShown = YES;
}
- (void)orderFrontRegardless {
    _isShown = YES;
}
- (void)orderOut:(id)sender {
    _isShown = NO;
}
- (NSRect)convertRectToScreen:(NSRect)rect {
    rect.origin.x += world().statusItemX;
    rect.origin.y += world().statusItemY;
    return rect;
}
- (void)close {
    closed.push_back((const void*)self);
    [windows removeObject:self];
}
@end
@implementation NSPanel
@end
@implementation NSColor
+ (NSColor*)clearColor {
    return [[NSColor new] autorelease];
}
- (id)copyWithZone:(NSZone*)zone {
    return [self retain];
}
@end
@interface NSStatusBarWindow : NSWindow
@end
@implementation NSStatusBarWindow
@end

NSAppearanceName const NSAppearanceNameAqua = @"NSAppearanceNameAqua";
NSAppearanceName const NSAppearanceNameDarkAqua = @"NSAppearanceNameDarkAqua";
@implementation NSAppearance
- (NSAppearanceName)bestMatchFromAppearancesWithNames:(NSArray*)names {
    NSString* own = world().isDark ? NSAppearanceNameDarkAqua : NSAppearanceNameAqua;
    return [names containsObject:own] ? own : nil;
}
@end

@implementation NSApplication
- (NSAppearance*)effectiveAppearance {
    return [[NSAppearance new] autorelease];
}
@synthesize delegate = _delegate;
- (NSArray*)windows {
    return [[windows copy] autorelease];
}
- (NSEvent*)currentEvent {
    return currentEvent;
}
- (void)activateIgnoringOtherApps:(BOOL)ignores {
    if (ignores) ++world().activations;
}
- (void)terminate:(id)sender {
    ++world().terminations;
}
@end

@implementation NSMenuItem
@synthesize target = _target, tag = _tag, state = _state, image = _image;
+ (NSMenuItem*)separatorItem {
    NSMenuItem* made = [[[NSMenuItem alloc] initWithTitle:nil action:nullptr
                                            keyEquivalent:nil] autorelease];
    return made;
}
- (instancetype)initWithTitle:(NSString*)title action:(SEL)action keyEquivalent:(NSString*)key {
    self = [super init];
    _itemTitle = [title retain];
    _itemKey = [key retain];
    _itemAction = action;
    return self;
}
@end
@implementation NSMenu
@synthesize minimumWidth = _minimumWidth;
- (instancetype)initWithTitle:(NSString*)title {
    self = [super init];
    _items = [NSMutableArray new];
    return self;
}
- (void)addItem:(NSMenuItem*)item {
    [_items addObject:item];
}
- (BOOL)popUpMenuPositioningItem:(NSMenuItem*)item
                      atLocation:(NSPoint)location
                          inView:(NSView*)view {
    fake::PoppedMenu popped{.x = location.x,
                            .y = location.y,
                            .minimumWidth = self.minimumWidth,
                            .view = (const void*)view};
    for (NSMenuItem* shown in _items) {
        popped.items.push_back({.title = fake::bytes(shown->_itemTitle),
                                .key = fake::bytes(shown->_itemKey),
                                .image = fake::nameOf(shown.image),
                                .isSeparator = shown->_itemTitle == nil,
                                .isChecked = shown.state == NSControlStateValueOn});
    }
    world().menus.push_back(popped);
    if (world().whileAMenuIsOpen) world().whileAMenuIsOpen();
    for (NSMenuItem* shown in _items) {
        if (world().chosenTitle.empty() || fake::bytes(shown->_itemTitle) != world().chosenTitle) {
            continue;
        }
        [shown.target performSelector:shown->_itemAction withObject:shown];
        return YES;
    }
    return NO;
}
@end

namespace fake {

void clickStatusItem(int type, std::uint64_t flags) {
    @autoreleasepool {
        currentEvent = makeClick(type, flags);
        NSStatusBarButton* button = statusItem.button;
        [button.target performSelector:button.action withObject:button];
        currentEvent = nil;
    }
}

const void* makeWindow(const std::string& className, bool isPanel) {
    Class kind = isPanel ? [NSPanel class] : NSClassFromString(text(className));
    NSWindow* window = [kind new];
    window.contentView = [[NSView new] autorelease];
    [windows addObject:window];
    return (const void*)window;
}
std::vector<const void*> closedWindows() { return closed; }

void resetInterface() {
    if (windows == nil) windows = [NSMutableArray new];
    [windows removeAllObjects];
    closed.clear();
    currentEvent = nil;
    statusItem = nil;
    resetMonitors();
    if (NSApp == nil) NSApp = [NSApplication new];
    [NSApp setDelegate:nil];
}

void reopen() { [[NSApp delegate] applicationShouldHandleReopen:NSApp hasVisibleWindows:NO]; }

unsigned long styleOf(const void* window) { return ((NSWindow*)window)->_madeWithStyle; }

const void* firstResponder(const void* window) {
    return (const void*)((NSWindow*)window)->_firstResponder;
}

}  // namespace fake
