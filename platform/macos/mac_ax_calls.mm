#include "platform/macos/mac_ax_calls.hpp"

#include <algorithm>

namespace orvel::macos {

namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<float>;

/// The system's own limit is six seconds, long enough to freeze a keyboard.
constexpr Seconds kCallLimit{0.25F};
/// Zero would mean the system's own limit.
constexpr Seconds kShortest{0.001F};

template <typename Value>
std::optional<Value> asValue(CFTypeRef object, AXValueType type) {
    if (object == nullptr || CFGetTypeID(object) != AXValueGetTypeID()) return std::nullopt;
    Value value;
    if (!AXValueGetValue(static_cast<AXValueRef>(object), type, &value)) return std::nullopt;
    return value;
}

}  // namespace

void AxBudget::set(std::optional<std::chrono::milliseconds> budget) {
    end_.reset();
    if (budget) end_ = Clock::now() + *budget;
}

bool AxBudget::allows(AXUIElementRef element) const {
    Seconds limit = kCallLimit;
    if (end_) limit = std::min(limit, std::chrono::duration_cast<Seconds>(*end_ - Clock::now()));
    if (limit <= Seconds::zero()) return false;
    AXUIElementSetMessagingTimeout(element, std::max(limit, kShortest).count());
    return true;
}

CfRef<CFTypeRef> copyAttribute(const AxBudget& budget, AXUIElementRef element, CFStringRef name) {
    CfRef<CFTypeRef> value;
    if (!budget.allows(element)) return value;
    const AXError error = AXUIElementCopyAttributeValue(element, name, value.receive());
    return error == kAXErrorSuccess ? value : CfRef<CFTypeRef>();
}

AXUIElementRef asElement(CFTypeRef object) {
    if (object == nullptr || CFGetTypeID(object) != AXUIElementGetTypeID()) return nullptr;
    return static_cast<AXUIElementRef>(object);
}

std::optional<CGPoint> asPoint(CFTypeRef object) {
    return asValue<CGPoint>(object, kAXValueTypeCGPoint);
}
std::optional<CGSize> asSize(CFTypeRef object) {
    return asValue<CGSize>(object, kAXValueTypeCGSize);
}
std::optional<CGRect> asRect(CFTypeRef object) {
    return asValue<CGRect>(object, kAXValueTypeCGRect);
}

std::optional<bool> asBool(CFTypeRef object) {
    if (object == nullptr || CFGetTypeID(object) != CFBooleanGetTypeID()) return std::nullopt;
    return CFBooleanGetValue(static_cast<CFBooleanRef>(object));
}

}  // namespace orvel::macos
