#include "platform/macos/mac_panels.hpp"

#include "platform/macos/mac_factories.hpp"
#include "platform/macos/mac_panel_windows.hpp"

#import <AppKit/AppKit.h>

@interface OrvelPanel : NSPanel {
    BOOL _mayBecomeKey;
}
- (void)setMayBecomeKey:(BOOL)mayBecomeKey;
@end

@implementation OrvelPanel
- (void)setMayBecomeKey:(BOOL)mayBecomeKey {
    _mayBecomeKey = mayBecomeKey;
}
- (BOOL)canBecomeKeyWindow {
    return _mayBecomeKey;
}
@end

namespace orvel::macos {

namespace {

NSRect nativeRect(ScreenRect rect) { return NSMakeRect(rect.x, rect.y, rect.width, rect.height); }

OrvelPanel* windowFrom(const PanelSpec& spec) {
    OrvelPanel* window =
        [[OrvelPanel alloc] initWithContentRect:nativeRect(spec.contentRect)
                                      styleMask:static_cast<NSWindowStyleMask>(spec.styleMask)
                                        backing:NSBackingStoreBuffered
                                          defer:NO];
    [window setMayBecomeKey:spec.canBecomeKey];
    window.releasedWhenClosed = NO;
    window.hidesOnDeactivate = NO;
    window.opaque = NO;
    window.backgroundColor = NSColor.clearColor;
    window.hasShadow = spec.hasShadow;
    window.acceptsMouseMovedEvents = spec.acceptsMouseMoved;
    if (spec.level) window.level = *spec.level;
    if (spec.collectionBehavior) {
        window.collectionBehavior =
            static_cast<NSWindowCollectionBehavior>(*spec.collectionBehavior);
    }
    nameWindow((__bridge CFTypeRef)window, spec.id);
    return window;
}

class MacPanel final : public Panel {
public:
    MacPanel(const PanelSpec& spec, CFTypeRef view) : padding_(spec.contentPadding) {
        @autoreleasepool {
            window_ = CfRef<CFTypeRef>(CFBridgingRetain(windowFrom(spec)));
            if (view != nullptr) window().contentView = (__bridge NSView*)view;
        }
    }
    ~MacPanel() override { [window() close]; }
    MacPanel(const MacPanel&) = delete;
    MacPanel& operator=(const MacPanel&) = delete;

    void setFrame(ScreenRect frame) override { [window() setFrame:nativeRect(frame) display:YES]; }
    void setFrameOrigin(ScreenPoint origin) override {
        [window() setFrameOrigin:NSMakePoint(origin.x, origin.y)];
    }
    void makeKeyAndOrderFront() override { [window() makeKeyAndOrderFront:nil]; }
    void orderFrontRegardless() override { [window() orderFrontRegardless]; }
    void orderOut() override { [window() orderOut:nil]; }
    [[nodiscard]] bool isVisible() const override { return window().isVisible; }
    [[nodiscard]] ScreenRect frame() const override {
        const NSRect frame = window().frame;
        return {frame.origin.x, frame.origin.y, frame.size.width, frame.size.height};
    }
    [[nodiscard]] Size fittingSize() const override {
        const NSSize content = [window().contentView fittingSize];
        return {content.width + 2 * padding_, content.height + 2 * padding_};
    }

private:
    [[nodiscard]] NSWindow* window() const { return (__bridge NSWindow*)window_.get(); }

    CfRef<CFTypeRef> window_;
    double padding_;
};

class MacPanels final : public Panels {
public:
    explicit MacPanels(PanelContents& contents) : contents_(contents) {}

    [[nodiscard]] std::unique_ptr<Panel> create(const PanelSpec& spec) override {
        return std::make_unique<MacPanel>(spec, contents_.viewOf(spec.id, spec.contentPadding));
    }

private:
    PanelContents& contents_;
};

}  // namespace

std::unique_ptr<Panels> makePanels(PanelContents& contents) {
    return std::make_unique<MacPanels>(contents);
}

}  // namespace orvel::macos
