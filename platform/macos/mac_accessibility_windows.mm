#include "platform/accessibility_windows.hpp"

#include "platform/macos/mac_enhanced_mode.hpp"
#include "platform/macos/mac_factories.hpp"
#include "platform/macos/mac_text.hpp"

#import <Foundation/Foundation.h>

namespace orvel::macos {

namespace {

AXUIElementRef elementOf(const AxWindow& window) {
    return static_cast<AXUIElementRef>(window.element.get());
}

AxWindow windowOf(AXUIElementRef element) {
    CFRetain(element);
    return {std::shared_ptr<const void>(element, [](CFTypeRef owned) { CFRelease(owned); })};
}

std::optional<std::string> asText(CFTypeRef object) {
    if (object == nullptr || CFGetTypeID(object) != CFStringGetTypeID()) return std::nullopt;
    return utf8(static_cast<CFStringRef>(object));
}

/// In the order of `AxWindowAttributes`.
NSArray* attributeNames() {
    return @[
        (__bridge NSString*)kAXRoleAttribute, (__bridge NSString*)kAXTitleAttribute,
        (__bridge NSString*)kAXPositionAttribute, (__bridge NSString*)kAXSizeAttribute,
        (__bridge NSString*)kAXMinimizedAttribute
    ];
}

/// An attribute that could not be read stands in `values` as an error.
AxWindowAttributes attributesFrom(CFArrayRef values) {
    const auto value = [values](CFIndex index) { return CFArrayGetValueAtIndex(values, index); };
    AxWindowAttributes attributes;
    attributes.role = asText(value(0));
    attributes.title = asText(value(1));
    if (const auto point = asPoint(value(2))) attributes.position = AxPoint{point->x, point->y};
    if (const auto size = asSize(value(3))) attributes.size = Size{size->width, size->height};
    attributes.isMinimized = asBool(value(4));
    return attributes;
}

class MacAccessibilityWindows final : public AccessibilityWindows {
public:
    void setBudget(std::optional<std::chrono::milliseconds> budget) override {
        enhancedMode_.restore();
        budget_.set(budget);
    }

    [[nodiscard]] std::optional<AxWindow> focusedWindow(ProcessId pid) const override {
        const CfRef<CFTypeRef> window = ofApplication(pid, kAXFocusedWindowAttribute);
        const AXUIElementRef element = asElement(window.get());
        if (element == nullptr) return std::nullopt;
        return windowOf(element);
    }

    [[nodiscard]] std::optional<std::vector<AxWindow>> windows(ProcessId pid) const override {
        const CfRef<CFTypeRef> list = ofApplication(pid, kAXWindowsAttribute);
        if (!list || CFGetTypeID(list.get()) != CFArrayGetTypeID()) return std::nullopt;
        const auto elements = static_cast<CFArrayRef>(list.get());
        std::vector<AxWindow> windows;
        for (CFIndex i = 0; i < CFArrayGetCount(elements); ++i) {
            const AXUIElementRef element = asElement(CFArrayGetValueAtIndex(elements, i));
            if (element != nullptr) windows.push_back(windowOf(element));
        }
        return windows;
    }

    [[nodiscard]] AxWindowAttributes attributes(const AxWindow& window) const override {
        @autoreleasepool {
            NSArray* names = attributeNames();
            CfRef<CFArrayRef> values;
            if (!budget_.allows(elementOf(window))) return {};
            const AXError error = AXUIElementCopyMultipleAttributeValues(
                elementOf(window), (__bridge CFArrayRef)names, 0, values.receive());
            const bool isComplete =
                error == kAXErrorSuccess && values &&
                CFArrayGetCount(values.get()) == static_cast<CFIndex>(names.count);
            return isComplete ? attributesFrom(values.get()) : AxWindowAttributes{};
        }
    }

    bool setPosition(const AxWindow& window, AxPoint position) override {
        const CGPoint point = CGPointMake(position.x, position.y);
        const CfRef<AXValueRef> value(AXValueCreate(kAXValueTypeCGPoint, &point));
        return moveOrResize(window, kAXPositionAttribute, value);
    }
    bool setSize(const AxWindow& window, Size size) override {
        const CGSize wanted = CGSizeMake(size.width, size.height);
        const CfRef<AXValueRef> value(AXValueCreate(kAXValueTypeCGSize, &wanted));
        return moveOrResize(window, kAXSizeAttribute, value);
    }
    bool setMinimized(const AxWindow& window, bool minimized) override {
        return setFlag(window, kAXMinimizedAttribute, minimized);
    }
    bool raise(const AxWindow& window) override {
        return budget_.allows(elementOf(window)) &&
               AXUIElementPerformAction(elementOf(window), kAXRaiseAction) == kAXErrorSuccess;
    }
    bool setMain(const AxWindow& window, bool isMain) override {
        return setFlag(window, kAXMainAttribute, isMain);
    }
    bool setFocused(const AxWindow& window, bool isFocused) override {
        return setFlag(window, kAXFocusedAttribute, isFocused);
    }

private:
    [[nodiscard]] CfRef<CFTypeRef> ofApplication(ProcessId pid, CFStringRef name) const {
        const CfRef<AXUIElementRef> application(AXUIElementCreateApplication(pid));
        return application ? copyAttribute(budget_, application.get(), name) : CfRef<CFTypeRef>();
    }

    bool set(const AxWindow& window, CFStringRef name, CFTypeRef value) {
        return budget_.allows(elementOf(window)) &&
               AXUIElementSetAttributeValue(elementOf(window), name, value) == kAXErrorSuccess;
    }
    bool setFlag(const AxWindow& window, CFStringRef name, bool flag) {
        return set(window, name, flag ? kCFBooleanTrue : kCFBooleanFalse);
    }
    bool moveOrResize(const AxWindow& window, CFStringRef name, const CfRef<AXValueRef>& value) {
        if (!value) return false;
        enhancedMode_.pauseFor(budget_, elementOf(window));
        const bool isDone = set(window, name, value.get());
        if (!budget_.isSet()) enhancedMode_.restore();
        return isDone;
    }

    AxBudget budget_;
    EnhancedMode enhancedMode_;
};

}  // namespace

std::unique_ptr<AccessibilityWindows> makeAccessibilityWindows() {
    return std::make_unique<MacAccessibilityWindows>();
}

}  // namespace orvel::macos
