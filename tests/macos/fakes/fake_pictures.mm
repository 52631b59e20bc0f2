#include "fake_support.hpp"

#import <ScreenCaptureKit/ScreenCaptureKit.h>

#include <algorithm>
#include <cstdio>
#include <tuple>

@interface FakePixels : NSObject {
@public
    int _width, _height;
}
@end
@implementation FakePixels
@end

@interface FakeContext : NSObject {
@public
    uint32_t* _pixels;
    std::size_t _count;
}
@end
@implementation FakeContext
@end

@interface FakeImageObject : NSImage {
@public
    std::string _name;
    int _width, _height;
    bool _isTemplate;
}
@end

@interface FakeScreen : NSScreen {
@public
    fake::Screen _screen;
}
@end

@interface FakeServerWindow : SCWindow {
@public
    fake::ServerWindow _window;
}
@end

namespace {

using fake::ServerWindow;
using fake::world;

FakeImageObject* makeImageObject(Class kind, const std::string& name, int width, int height) {
    FakeImageObject* made = [[kind alloc] init];
    made->_name = name;
    made->_width = width;
    made->_height = height;
    return made;
}

NSMutableArray* screens() {
    static NSMutableArray* all = [NSMutableArray new];
    if (all.count == world().screens.size()) return all;
    [all removeAllObjects];
    for (const fake::Screen& screen : world().screens) {
        FakeScreen* made = [[FakeScreen new] autorelease];
        made->_screen = screen;
        [all addObject:made];
    }
    return all;
}

NSDictionary* describe(const ServerWindow& window) {
    NSMutableDictionary* described = [NSMutableDictionary dictionary];
    const auto number = [](long long value) { return [NSNumber numberWithLongLong:value]; };
    [described setObject:number(window.number) forKey:(id)(void*)kCGWindowNumber];
    [described setObject:number(window.pid) forKey:(id)(void*)kCGWindowOwnerPID];
    [described setObject:number(window.layer) forKey:(id)(void*)kCGWindowLayer];
    if (window.name) [described setObject:fake::text(*window.name) forKey:(id)(void*)kCGWindowName];
    NSMutableDictionary* bounds = [NSMutableDictionary dictionary];
    [bounds setObject:[NSNumber numberWithDouble:window.x] forKey:@"X"];
    [bounds setObject:[NSNumber numberWithDouble:window.y] forKey:@"Y"];
    [bounds setObject:[NSNumber numberWithDouble:window.width] forKey:@"Width"];
    [bounds setObject:[NSNumber numberWithDouble:window.height] forKey:@"Height"];
    [described setObject:bounds forKey:(id)(void*)kCGWindowBounds];
    return described;
}

const ServerWindow* windowNumbered(unsigned number) {
    for (const ServerWindow& window : world().serverWindows) {
        if (window.number == number) return &window;
    }
    return nullptr;
}

CGImageRef capture(unsigned number) {
    const ServerWindow* window = windowNumbered(number);
    if (window == nullptr || window->captureWidth == 0 || !world().mayCapture) return nullptr;
    return fake::makeImage(window->captureWidth, static_cast<int>(window->height));
}

}  // namespace

namespace fake {

CGImageRef makeImage(int width, int height) {
    FakePixels* pixels = [[FakePixels new] autorelease];
    pixels->_width = width;
    pixels->_height = height;
    return (CGImageRef)(void*)pixels;
}

std::string nameOf(NSImage* image) { return image == nil ? "" : ((FakeImageObject*)image)->_name; }

}  // namespace fake

extern "C" {

const CGRect CGRectNull = {};
const CFStringRef kCGWindowNumber = CFSTR("kCGWindowNumber");
const CFStringRef kCGWindowOwnerPID = CFSTR("kCGWindowOwnerPID");
const CFStringRef kCGWindowLayer = CFSTR("kCGWindowLayer");
const CFStringRef kCGWindowName = CFSTR("kCGWindowName");
const CFStringRef kCGWindowBounds = CFSTR("kCGWindowBounds");

size_t CGImageGetWidth(CGImageRef image) {
    return static_cast<std::size_t>(((FakePixels*)fake::object(image))->_width);
}
size_t CGImageGetHeight(CGImageRef image) {
    return static_cast<std::size_t>(((FakePixels*)fake::object(image))->_height);
}
const CFStringRef kCGColorSpaceSRGB = CFSTR("kCGColorSpaceSRGB");
CGColorSpaceRef CGColorSpaceCreateWithName(CFStringRef name) {
    return fake::give<CGColorSpaceRef>(fake::object(name));
}
CGContextRef CGBitmapContextCreate(void* pixels, size_t width, size_t height, size_t bits,
                                   size_t bytesPerRow, CGColorSpaceRef, uint32_t layout) {
    constexpr uint32_t kNative = kCGImageAlphaPremultipliedFirst | kCGBitmapByteOrder32Little;
    if (bits != 8 || bytesPerRow != width * 4 || layout != kNative) return nullptr;
    FakeContext* context = [[FakeContext new] autorelease];
    context->_pixels = (uint32_t*)pixels;
    context->_count = width * height;
    return fake::give<CGContextRef>(context);
}
void CGContextDrawImage(CGContextRef context, CGRect, CGImageRef image) {
    FakeContext* it = fake::object(context);
    // Every pixel tells how wide the picture was.
    std::fill_n(it->_pixels, it->_count, static_cast<uint32_t>(CGImageGetWidth(image)));
}
bool CGRectMakeWithDictionaryRepresentation(CFDictionaryRef dictionary, CGRect* rect) {
    NSDictionary* it = fake::object(dictionary);
    const auto value = [it](NSString* key) { return [[it objectForKey:key] doubleValue]; };
    *rect = {{value(@"X"), value(@"Y")}, {value(@"Width"), value(@"Height")}};
    return true;
}
CFArrayRef CGWindowListCopyWindowInfo(CGWindowListOption option, CGWindowID) {
    NSMutableArray* entries = [NSMutableArray array];
    const bool isOnScreenOnly = (option & kCGWindowListOptionOnScreenOnly) != 0;
    for (const ServerWindow& window : world().serverWindows) {
        if (window.isOnScreen || !isOnScreenOnly) [entries addObject:describe(window)];
    }
    return fake::give<CFArrayRef>(entries);
}
CGImageRef CGWindowListCreateImage(CGRect, CGWindowListOption option, CGWindowID number,
                                   CGWindowImageOption imageOption) {
    if (option != kCGWindowListOptionIncludingWindow ||
        imageOption != kCGWindowImageBoundsIgnoreFraming) {
        return nullptr;
    }
    return fake::give<CGImageRef>(fake::object(capture(number)));
}
bool CGPreflightScreenCaptureAccess(void) { return world().mayCapture; }
bool CGRequestScreenCaptureAccess(void) {
    ++world().capturePrompts;
    return world().mayCapture;
}
}

@implementation SCWindow
- (CGWindowID)windowID {
    return ((FakeServerWindow*)self)->_window.number;
}
- (CGRect)frame {
    const ServerWindow& window = ((FakeServerWindow*)self)->_window;
    return {{window.x, window.y}, {window.width, window.height}};
}
@end
@implementation FakeServerWindow
@end

@interface FakeContent : SCShareableContent
@end
@implementation SCShareableContent
+ (void)getShareableContentExcludingDesktopWindows:(BOOL)excludeDesktopWindows
                               onScreenWindowsOnly:(BOOL)onScreenWindowsOnly
                                 completionHandler:
                                     (void (^)(SCShareableContent*, NSError*))handler {
    if (world().capturesNeverAnswer) return;
    auto kept = (void (^)(SCShareableContent*, NSError*))[(id)handler copy];
    fake::runOnOtherThread([kept] { kept([[FakeContent new] autorelease], nil); });
}
- (NSArray*)windows {
    NSMutableArray* windows = [NSMutableArray array];
    for (const ServerWindow& window : world().serverWindows) {
        FakeServerWindow* made = [[FakeServerWindow new] autorelease];
        made->_window = window;
        [windows addObject:made];
    }
    return windows;
}
@end
@implementation FakeContent
@end

@interface FakeFilter : SCContentFilter {
@public
    SCWindow* _window;
}
@end
@implementation SCContentFilter
+ (id)allocWithZone:(NSZone*)zone {
    return self == [SCContentFilter class] ? [FakeFilter allocWithZone:zone]
                                           : [super allocWithZone:zone];
}
- (instancetype)initWithDesktopIndependentWindow:(SCWindow*)window {
    self = [super init];
    ((FakeFilter*)self)->_window = [window retain];
    return self;
}
- (float)pointPixelScale {
    return 2;
}
@end
@implementation FakeFilter
@end
@implementation SCStreamConfiguration
@synthesize width = _width, height = _height, showsCursor = _showsCursor;
@synthesize ignoreShadowsSingleWindow = _ignoreShadowsSingleWindow;
@end
@implementation SCScreenshotManager
+ (void)captureImageWithFilter:(SCContentFilter*)filter
                 configuration:(SCStreamConfiguration*)configuration
             completionHandler:(void (^)(CGImageRef, NSError*))handler {
    const SCWindow* window = ((FakeFilter*)filter)->_window;
    if (capture(window.windowID) == nullptr) {
        handler(nullptr, [NSError errorWithDomain:@"fake" code:1 userInfo:nil]);
        return;
    }
    handler(fake::makeImage(static_cast<int>(configuration.width),
                            static_cast<int>(configuration.height)),
            nil);
}
@end

@implementation NSScreen
+ (NSArray*)screens {
    return screens();
}
+ (NSScreen*)mainScreen {
    const auto index = static_cast<NSUInteger>(world().mainScreen);
    return index < screens().count ? [screens() objectAtIndex:index] : nil;
}
- (NSRect)frame {
    const fake::Screen& screen = ((FakeScreen*)self)->_screen;
    return NSMakeRect(screen.x, screen.y, screen.width, screen.height);
}
- (NSRect)visibleFrame {
    const fake::Screen& screen = ((FakeScreen*)self)->_screen;
    return NSMakeRect(screen.visibleX, screen.visibleY, screen.visibleWidth, screen.visibleHeight);
}
@end
@implementation FakeScreen
@end

@implementation NSImage
+ (id)allocWithZone:(NSZone*)zone {
    return self == [NSImage class] ? [FakeImageObject allocWithZone:zone]
                                   : [super allocWithZone:zone];
}
+ (NSImage*)imageNamed:(NSString*)name {
    for (const std::string& known : world().imageNames) {
        if (known == fake::bytes(name)) {
            return [makeImageObject([FakeImageObject class], known, 36, 36) autorelease];
        }
    }
    return nil;
}
+ (instancetype)imageWithSystemSymbolName:(NSString*)name
                 accessibilityDescription:(NSString*)description {
    return [makeImageObject([FakeImageObject class], "symbol " + fake::bytes(name), 18, 18)
        autorelease];
}
- (instancetype)initWithContentsOfFile:(NSString*)path {
    const auto found = world().imageFiles.find(fake::bytes(path));
    if (found == world().imageFiles.end()) return nil;
    FakeImageObject* made = (FakeImageObject*)[super init];
    made->_name = found->first;
    std::tie(made->_width, made->_height) = found->second;
    return made;
}
- (instancetype)initWithPasteboard:(NSPasteboard*)pasteboard {
    for (const auto& [type, contents] : world().pasteboard) {
        if (type != "public.tiff") continue;
        FakeImageObject* made = (FakeImageObject*)[super init];
        made->_name = contents;
        std::sscanf(contents.c_str(), "%dx%d", &made->_width, &made->_height);
        return made;
    }
    return nil;
}
- (void)setSize:(NSSize)size {
    ((FakeImageObject*)self)->_width = static_cast<int>(size.width);
    ((FakeImageObject*)self)->_height = static_cast<int>(size.height);
}
- (void)setTemplate:(BOOL)isTemplate {
    ((FakeImageObject*)self)->_isTemplate = isTemplate;
}
- (NSData*)TIFFRepresentation {
    return [fake::text(((FakeImageObject*)self)->_name) dataUsingEncoding:NSUTF8StringEncoding];
}
- (CGImageRef)CGImageForProposedRect:(NSRect*)rect
                             context:(NSGraphicsContext*)context
                               hints:(NSDictionary*)hints {
    FakeImageObject* image = (FakeImageObject*)self;
    return fake::makeImage(image->_width, image->_height);
}
@end
@implementation FakeImageObject
@end
