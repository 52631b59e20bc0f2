#include "platform/macos/mac_quick_views.hpp"

#include "platform/macos/mac_qt_view.hpp"

#import <AppKit/AppKit.h>

#include <utility>

namespace orvel::macos {

namespace {

/// A plain view around the window's own, which keeps filling it.
CfRef<CFTypeRef> frameAround(QWindow& window) {
    NSView* frame = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 1, 1)];
    NSView* view = (__bridge NSView*)nativeViewOf(window);
    view.frame = frame.bounds;
    view.autoresizingMask = NSViewWidthSizable | NSViewHeightSizable;
    [frame addSubview:view];
    return CfRef<CFTypeRef>(CFBridgingRetain(frame));
}

}  // namespace

void MacQuickViews::setContent(PanelId panel, qt::PanelContent content) {
    contents_.insert_or_assign(panel, std::move(content));
}

void MacQuickViews::removeContent(PanelId panel) {
    contents_.erase(panel);
    const auto found = shown_.find(panel);
    if (found != shown_.end()) found->second.view->unload();
}

CFTypeRef MacQuickViews::viewOf(PanelId panel, double padding) {
    const auto content = contents_.find(panel);
    if (content == contents_.end()) return nullptr;
    @autoreleasepool {
        auto view = std::make_unique<qt::PanelView>(padding);
        auto frame = frameAround(view->window());
        view->load(engine_, content->second);
        // A panel that is made anew has a view of its own; the old one went with the old panel.
        Shown& shown = shown_[panel];
        shown = {.frame = std::move(frame), .view = std::move(view)};
        return shown.frame.get();
    }
}

CFTypeRef MacQuickViews::keyViewOf(PanelId panel) {
    const auto found = shown_.find(panel);
    return found == shown_.end() ? nullptr : nativeViewOf(found->second.view->window());
}

std::optional<Size> MacQuickViews::fittingSizeOf(PanelId panel) const {
    const auto found = shown_.find(panel);
    return found == shown_.end() ? std::nullopt : found->second.view->fittingSize();
}

void MacQuickViews::setShown(PanelId panel, bool isShown) {
    const auto found = shown_.find(panel);
    if (found != shown_.end()) found->second.view->window().setVisible(isShown);
}

QQuickItem* MacQuickViews::rootOf(PanelId panel) const {
    const auto found = shown_.find(panel);
    return found == shown_.end() ? nullptr : found->second.view->root();
}

}  // namespace orvel::macos
