#include "platform/essentials.hpp"

#include "platform/event_tap.hpp"
#include "platform/macos/mac_factories.hpp"

#import <ApplicationServices/ApplicationServices.h>

namespace orvel::macos {

namespace {

class MacEssentials final : public Essentials {
public:
    explicit MacEssentials(const EventTap& tap) : tap_(tap) {}

    [[nodiscard]] std::vector<EssentialFinding> check() override {
        const bool isTrusted = AXIsProcessTrusted();
        std::vector<EssentialFinding> findings{{Essential::accessibilityPermission, isTrusted}};
        // Without the permission there can be no tap, which would only be said twice.
        if (isTrusted) findings.push_back({Essential::effectivePermission, tap_.exists()});
        return findings;
    }

private:
    const EventTap& tap_;
};

}  // namespace

std::unique_ptr<Essentials> makeEssentials(const EventTap& tap) {
    return std::make_unique<MacEssentials>(tap);
}

}  // namespace orvel::macos
