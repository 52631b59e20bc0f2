#include "platform/macos/mac_panel_windows.hpp"

#include "platform/macos/mac_text.hpp"

#import <AppKit/AppKit.h>

namespace orvel::macos {

namespace {

constexpr std::string_view kPrefix = "orvel.panel.";

}  // namespace

void nameWindow(CFTypeRef window, PanelId panel) {
    const auto name = cfString(std::string(kPrefix) + std::string(panelName(panel)));
    ((__bridge NSWindow*)window).identifier = (__bridge NSString*)name.get();
}

std::optional<PanelId> panelOfWindow(CFTypeRef window) {
    const std::string name = utf8(((__bridge NSWindow*)window).identifier);
    if (!name.starts_with(kPrefix)) return std::nullopt;
    return panelNamed(std::string_view(name).substr(kPrefix.size()));
}

CFTypeRef windowOfPanel(PanelId panel) {
    for (NSWindow* window in NSApp.windows) {
        const auto candidate = (__bridge CFTypeRef)window;
        if (panelOfWindow(candidate) == panel) return candidate;
    }
    return nullptr;
}

}  // namespace orvel::macos
