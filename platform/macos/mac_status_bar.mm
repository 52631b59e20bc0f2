#include "platform/status_bar.hpp"

#include "platform/macos/mac_action_target.hpp"
#include "platform/macos/mac_factories.hpp"
#include "platform/macos/mac_rect.hpp"
#include "platform/macos/mac_status_button.hpp"
#include "platform/macos/mac_text.hpp"

#import <AppKit/AppKit.h>

namespace orvel::macos {

namespace {

NSImage* imageFor(const StatusItemSpec& spec) {
    const auto name = cfString(spec.image);
    NSImage* image = [NSImage imageNamed:(__bridge NSString*)name.get()];
    if (image != nil) {
        [image setSize:NSMakeSize(spec.imageSize, spec.imageSize)];
    } else {
        const auto symbol = cfString(spec.fallbackSymbol);
        const auto description = cfString(spec.fallbackDescription);
        image = [NSImage imageWithSystemSymbolName:(__bridge NSString*)symbol.get()
                          accessibilityDescription:(__bridge NSString*)description.get()];
    }
    // The menu bar colours a template to fit what is behind it.
    [image setTemplate:YES];
    return image;
}

StatusItemClick currentClick() {
    NSEvent* event = NSApp.currentEvent;
    return {.button = event.type == NSEventTypeRightMouseUp ? StatusItemButton::right
                                                            : StatusItemButton::left,
            .flags = event.modifierFlags};
}

class MacStatusBar final : public StatusBar {
public:
    explicit MacStatusBar(StatusButton& button) : button_(button) {}
    ~MacStatusBar() override {
        if (item_) [NSStatusBar.systemStatusBar removeStatusItem:item()];
        button_.forget();
    }
    MacStatusBar(const MacStatusBar&) = delete;
    MacStatusBar& operator=(const MacStatusBar&) = delete;

    void createItem(const StatusItemSpec& spec,
                    std::function<void(const StatusItemClick&)> clicked) override {
        if (item_) return;
        @autoreleasepool {
            NSStatusItem* item = [NSStatusBar.systemStatusBar statusItemWithLength:spec.length];
            item_ = CfRef<CFTypeRef>(CFBridgingRetain(item));
            target_ = makeActionTarget([clicked = std::move(clicked)](CFTypeRef) {
                if (NSApp.currentEvent != nil) clicked(currentClick());
            });
            NSStatusBarButton* button = item.button;
            button.image = imageFor(spec);
            button.target = (__bridge id)target_.get();
            button.action = targetAction();
            [button sendActionOn:NSEventMaskLeftMouseUp | NSEventMaskRightMouseUp];
            button_.set((__bridge CFTypeRef)button);
        }
    }

    [[nodiscard]] std::optional<ScreenRect> buttonFrame() const override {
        @autoreleasepool {
            NSStatusBarButton* button = item().button;
            if (button == nil || button.window == nil) return std::nullopt;
            const NSRect inWindow = [button convertRect:button.bounds toView:nil];
            return rectFrom<ScreenRect>([button.window convertRectToScreen:inWindow]);
        }
    }

    void showPaused(bool isPaused) override { item().button.appearsDisabled = isPaused; }

private:
    [[nodiscard]] NSStatusItem* item() const { return (__bridge NSStatusItem*)item_.get(); }

    StatusButton& button_;
    CfRef<CFTypeRef> item_;
    CfRef<CFTypeRef> target_;
};

}  // namespace

std::unique_ptr<StatusBar> makeStatusBar(StatusButton& button) {
    return std::make_unique<MacStatusBar>(button);
}

}  // namespace orvel::macos
