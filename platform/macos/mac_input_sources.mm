#include "platform/input_sources.hpp"

#include "platform/macos/mac_cf_ref.hpp"
#include "platform/macos/mac_factories.hpp"
#include "platform/macos/mac_text.hpp"

#import <Carbon/Carbon.h>
#import <Foundation/Foundation.h>

namespace orvel::macos {

namespace {

CFTypeRef property(TISInputSourceRef source, CFStringRef name) {
    return TISGetInputSourceProperty(source, name);
}

InputSource describe(TISInputSourceRef source) {
    InputSource described;
    described.id = utf8OfObject(property(source, kTISPropertyInputSourceID));
    const CFTypeRef category = property(source, kTISPropertyInputSourceCategory);
    described.isKeyboard =
        category != nullptr && CFEqual(category, kTISCategoryKeyboardInputSource);
    const CFTypeRef isAscii = property(source, kTISPropertyInputSourceIsASCIICapable);
    if (isAscii != nullptr && CFGetTypeID(isAscii) == CFBooleanGetTypeID()) {
        described.isAsciiCapable = CFBooleanGetValue(static_cast<CFBooleanRef>(isAscii));
    }
    return described;
}

/// Sources whose property `name` is `value`, in the system's order.
CfRef<CFArrayRef> sourcesWith(CFStringRef name, CFTypeRef value) {
    @autoreleasepool {
        NSDictionary* filter = @{(__bridge NSString*)name : (__bridge id)value};
        return CfRef(TISCreateInputSourceList((__bridge CFDictionaryRef)filter, false));
    }
}

TISInputSourceRef sourceAt(CFArrayRef sources, CFIndex index) {
    return static_cast<TISInputSourceRef>(
        const_cast<void*>(CFArrayGetValueAtIndex(sources, index)));
}

class MacInputSources final : public InputSources {
public:
    [[nodiscard]] std::optional<InputSource> current() const override {
        const CfRef<TISInputSourceRef> source(TISCopyCurrentKeyboardInputSource());
        if (!source) return std::nullopt;
        InputSource described = describe(source.get());
        if (described.id.empty()) return std::nullopt;
        return described;
    }

    [[nodiscard]] std::vector<InputSource> selectable() const override {
        const CfRef<CFArrayRef> sources =
            sourcesWith(kTISPropertyInputSourceIsSelectCapable, kCFBooleanTrue);
        std::vector<InputSource> described;
        if (!sources) return described;
        for (CFIndex i = 0; i < CFArrayGetCount(sources.get()); ++i) {
            described.push_back(describe(sourceAt(sources.get(), i)));
        }
        return described;
    }

    void select(std::string_view id) override {
        const CfRef<CFArrayRef> sources =
            sourcesWith(kTISPropertyInputSourceID, cfString(id).get());
        if (!sources || CFArrayGetCount(sources.get()) == 0) return;
        TISSelectInputSource(sourceAt(sources.get(), 0));
    }
};

}  // namespace

std::unique_ptr<InputSources> makeInputSources() { return std::make_unique<MacInputSources>(); }

}  // namespace orvel::macos
