#include "platform/window_list.hpp"

#include "platform/macos/mac_cf_ref.hpp"
#include "platform/macos/mac_factories.hpp"
#include "platform/macos/mac_rect.hpp"
#include "platform/macos/mac_text.hpp"

#import <ApplicationServices/ApplicationServices.h>

namespace orvel::macos {

namespace {

std::int64_t number(CFDictionaryRef entry, CFStringRef key) {
    const CFTypeRef value = CFDictionaryGetValue(entry, key);
    std::int64_t read = 0;
    if (value != nullptr && CFGetTypeID(value) == CFNumberGetTypeID()) {
        CFNumberGetValue(static_cast<CFNumberRef>(value), kCFNumberSInt64Type, &read);
    }
    return read;
}

AxRect bounds(CFDictionaryRef entry) {
    const CFTypeRef value = CFDictionaryGetValue(entry, kCGWindowBounds);
    CGRect rect{};
    if (value == nullptr || CFGetTypeID(value) != CFDictionaryGetTypeID() ||
        !CGRectMakeWithDictionaryRepresentation(static_cast<CFDictionaryRef>(value), &rect)) {
        return {};
    }
    return rectFrom<AxRect>(rect);
}

WindowInfo describe(CFDictionaryRef entry) {
    return {.number = static_cast<WindowNumber>(number(entry, kCGWindowNumber)),
            .pid = static_cast<ProcessId>(number(entry, kCGWindowOwnerPID)),
            .layer = static_cast<int>(number(entry, kCGWindowLayer)),
            .name = utf8OfObject(CFDictionaryGetValue(entry, kCGWindowName)),
            .bounds = bounds(entry)};
}

class MacWindowList final : public WindowList {
public:
    [[nodiscard]] std::vector<WindowInfo> windows(WindowListScope scope) const override {
        CGWindowListOption option = kCGWindowListExcludeDesktopElements;
        if (scope == WindowListScope::onScreen) option |= kCGWindowListOptionOnScreenOnly;
        const CfRef<CFArrayRef> entries(CGWindowListCopyWindowInfo(option, kCGNullWindowID));
        std::vector<WindowInfo> windows;
        if (!entries) return windows;
        for (CFIndex i = 0; i < CFArrayGetCount(entries.get()); ++i) {
            windows.push_back(
                describe(static_cast<CFDictionaryRef>(CFArrayGetValueAtIndex(entries.get(), i))));
        }
        return windows;
    }
};

}  // namespace

std::unique_ptr<WindowList> makeWindowList() { return std::make_unique<MacWindowList>(); }

}  // namespace orvel::macos
