#include "platform/native_menu.hpp"

#include "platform/macos/mac_action_target.hpp"
#include "platform/macos/mac_factories.hpp"
#include "platform/macos/mac_panel_windows.hpp"
#include "platform/macos/mac_status_button.hpp"
#include "platform/macos/mac_text.hpp"
#include "platform/macos/mac_timer.hpp"

#import <AppKit/AppKit.h>

namespace orvel::macos {

namespace {

NSMenuItem* itemFrom(const MenuItem& item, NSInteger index, id target) {
    if (item.isSeparator()) return [NSMenuItem separatorItem];
    const auto title = cfString(item.title);
    const auto key = cfString(item.keyEquivalent);
    NSMenuItem* made = [[NSMenuItem alloc] initWithTitle:(__bridge NSString*)title.get()
                                                  action:targetAction()
                                           keyEquivalent:(__bridge NSString*)key.get()];
    made.target = target;
    made.tag = index;
    made.state = item.isChecked ? NSControlStateValueOn : NSControlStateValueOff;
    if (!item.symbol.empty()) {
        const auto symbol = cfString(item.symbol);
        made.image = [NSImage imageWithSystemSymbolName:(__bridge NSString*)symbol.get()
                               accessibilityDescription:nil];
    }
    return made;
}

NSMenu* menuFrom(const NativeMenu& menu, id target) {
    NSMenu* made = [[NSMenu alloc] initWithTitle:@""];
    made.minimumWidth = menu.minimumWidth;
    for (std::size_t i = 0; i < menu.items.size(); ++i) {
        [made addItem:itemFrom(menu.items[i], static_cast<NSInteger>(i), target)];
    }
    return made;
}

/// Ports count from the bottom left; a view may count from its top.
NSPoint inView(NSView* view, LocalPoint point) {
    const CGFloat y = view.isFlipped ? view.bounds.size.height - point.y : point.y;
    return NSMakePoint(point.x, y);
}

class MacNativeMenus final : public NativeMenus {
public:
    explicit MacNativeMenus(const StatusButton& button) : button_(button) {}

    void popUp(NativeMenu menu, MenuPlace place, std::function<void(std::size_t)> chosen) override {
        // The system's own call returns when the menu is gone; nobody shall wait for that. Nor may
        // a block of the main queue make it: until such a block returns, no other one runs.
        opening_ = startTimer(Duration::zero(), Duration::zero(),
                              [this, menu = std::move(menu), place, chosen = std::move(chosen)] {
                                  track(menu, place, chosen);
                              });
    }

private:
    void track(const NativeMenu& menu, const MenuPlace& place,
               const std::function<void(std::size_t)>& chosen) const {
        NSView* view = viewOf(place);
        if (view == nil) return;
        std::optional<std::size_t> picked;
        const CfRef<CFTypeRef> target = makeActionTarget([&](CFTypeRef sender) {
            picked = static_cast<std::size_t>(((__bridge NSMenuItem*)sender).tag);
        });
        NSMenu* native = menuFrom(menu, (__bridge id)target.get());
        [native popUpMenuPositioningItem:nil atLocation:inView(view, place.at) inView:view];
        if (picked) chosen(*picked);
    }

    [[nodiscard]] NSView* viewOf(const MenuPlace& place) const {
        if (!place.panel) return (__bridge NSView*)button_.view();
        return ((__bridge NSWindow*)windowOfPanel(*place.panel)).contentView;
    }

    const StatusButton& button_;
    std::unique_ptr<Timer> opening_;
};

}  // namespace

std::unique_ptr<NativeMenus> makeNativeMenus(const StatusButton& button) {
    return std::make_unique<MacNativeMenus>(button);
}

}  // namespace orvel::macos
