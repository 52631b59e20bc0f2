#include "platform/macos/mac_panels.hpp"

#include "platform/macos/mac_factories.hpp"
#include "platform/macos/mac_panel_windows.hpp"
#include "platform/macos/mac_rect.hpp"

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
    MacPanel(const PanelSpec& spec, PanelContents& contents) : contents_(contents), spec_(spec) {
        @autoreleasepool {
            window_ = CfRef<CFTypeRef>(CFBridgingRetain(windowFrom(spec)));
            const CFTypeRef view = contents.viewOf(spec.id, spec.contentPadding);
            if (view == nullptr) return;
            window().contentView = (__bridge NSView*)view;
            // From then on keys go there whenever the panel becomes key.
            const CFTypeRef keyView = contents.keyViewOf(spec.id);
            if (keyView != nullptr) [window() makeFirstResponder:(__bridge NSView*)keyView];
        }
    }
    ~MacPanel() override {
        contents_.setShown(spec_.id, false);
        [window() close];
    }
    MacPanel(const MacPanel&) = delete;
    MacPanel& operator=(const MacPanel&) = delete;

    void setFrame(ScreenRect frame) override { [window() setFrame:nativeRect(frame) display:YES]; }
    void setFrameOrigin(ScreenPoint origin) override {
        [window() setFrameOrigin:NSMakePoint(origin.x, origin.y)];
    }
    void makeKeyAndOrderFront() override {
        contents_.setShown(spec_.id, true);
        [window() makeKeyAndOrderFront:nil];
    }
    void orderFrontRegardless() override {
        contents_.setShown(spec_.id, true);
        [window() orderFrontRegardless];
    }
    void orderOut() override {
        [window() orderOut:nil];
        contents_.setShown(spec_.id, false);
    }
    [[nodiscard]] bool isVisible() const override { return window().isVisible; }
    [[nodiscard]] ScreenRect frame() const override { return rectFrom<ScreenRect>(window().frame); }
    [[nodiscard]] Size fittingSize() const override {
        if (const auto asked = contents_.fittingSizeOf(spec_.id)) return *asked;
        return spec_.contentRect.size();
    }

private:
    [[nodiscard]] NSWindow* window() const { return (__bridge NSWindow*)window_.get(); }

    PanelContents& contents_;
    PanelSpec spec_;
    CfRef<CFTypeRef> window_;
};

class MacPanels final : public Panels {
public:
    explicit MacPanels(PanelContents& contents) : contents_(contents) {}

    [[nodiscard]] std::unique_ptr<Panel> create(const PanelSpec& spec) override {
        return std::make_unique<MacPanel>(spec, contents_);
    }

private:
    PanelContents& contents_;
};

}  // namespace

std::unique_ptr<Panels> makePanels(PanelContents& contents) {
    return std::make_unique<MacPanels>(contents);
}

}  // namespace orvel::macos
