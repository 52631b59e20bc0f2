#include "platform/text_caret.hpp"

#include "platform/macos/mac_ax_calls.hpp"
#include "platform/macos/mac_factories.hpp"
#include "platform/macos/mac_rect.hpp"

namespace orvel::macos {

namespace {

constexpr std::chrono::milliseconds kLimit{300};

CfRef<CFTypeRef> boundsForRange(const AxBudget& budget, AXUIElementRef element, CFTypeRef range) {
    CfRef<CFTypeRef> bounds;
    if (!budget.allows(element)) return bounds;
    const AXError error = AXUIElementCopyParameterizedAttributeValue(
        element, kAXBoundsForRangeParameterizedAttribute, range, bounds.receive());
    return error == kAXErrorSuccess ? bounds : CfRef<CFTypeRef>();
}

class MacTextCaret final : public TextCaret {
public:
    [[nodiscard]] std::optional<AxRect> caretRect() const override {
        AxBudget budget;
        budget.set(kLimit);
        const CfRef<AXUIElementRef> system(AXUIElementCreateSystemWide());
        const auto focused = copyAttribute(budget, system.get(), kAXFocusedUIElementAttribute);
        const AXUIElementRef element = asElement(focused.get());
        if (element == nullptr) return std::nullopt;
        const auto range = copyAttribute(budget, element, kAXSelectedTextRangeAttribute);
        if (!range) return std::nullopt;
        const std::optional<CGRect> rect =
            asRect(boundsForRange(budget, element, range.get()).get());
        // Applications that do not know answer with an empty rectangle; a caret is at least high.
        if (!rect || rect->size.height <= 0) return std::nullopt;
        return rectFrom<AxRect>(*rect);
    }
};

}  // namespace

std::unique_ptr<TextCaret> makeTextCaret() { return std::make_unique<MacTextCaret>(); }

}  // namespace orvel::macos
