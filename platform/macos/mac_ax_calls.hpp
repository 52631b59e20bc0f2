#pragma once

#include "platform/base/geometry.hpp"
#include "platform/macos/mac_cf_ref.hpp"

#include <ApplicationServices/ApplicationServices.h>
#include <chrono>
#include <optional>

namespace orvel::macos {

/// How long accessibility calls may wait for the application they ask. Every call has a limit of
/// its own; a budget limits a series of them.
class AxBudget {
public:
    void set(std::optional<std::chrono::milliseconds> budget);
    [[nodiscard]] bool isSet() const { return end_.has_value(); }
    /// Limits the next call to `element` to what is left; false when nothing is.
    [[nodiscard]] bool allows(AXUIElementRef element) const;

private:
    std::optional<std::chrono::steady_clock::time_point> end_;
};

/// Null when the application gives no such attribute, or not in time.
CfRef<CFTypeRef> copyAttribute(const AxBudget& budget, AXUIElementRef element, CFStringRef name);
/// Null unless `object` is an accessibility element.
AXUIElementRef asElement(CFTypeRef object);

/// Absent unless `object` holds such a value.
std::optional<CGPoint> asPoint(CFTypeRef object);
std::optional<CGSize> asSize(CFTypeRef object);
std::optional<CGRect> asRect(CFTypeRef object);
std::optional<bool> asBool(CFTypeRef object);

}  // namespace orvel::macos
