#include "platform/login_items.hpp"

#include "platform/macos/mac_factories.hpp"
#include "platform/macos/mac_text.hpp"

#import <ServiceManagement/ServiceManagement.h>

namespace orvel::macos {

namespace {

Result<> outcome(bool isDone, NSError* error) {
    if (isDone) return {};
    return failureOf(error);
}

class MacLoginItems final : public LoginItems {
public:
    Result<> registerProgram() override {
        @autoreleasepool {
            NSError* error = nil;
            const bool isDone = [SMAppService.mainAppService registerAndReturnError:&error];
            return outcome(isDone, error);
        }
    }

    Result<> unregisterProgram() override {
        @autoreleasepool {
            NSError* error = nil;
            const bool isDone = [SMAppService.mainAppService unregisterAndReturnError:&error];
            return outcome(isDone, error);
        }
    }
};

}  // namespace

std::unique_ptr<LoginItems> makeLoginItems() { return std::make_unique<MacLoginItems>(); }

}  // namespace orvel::macos
