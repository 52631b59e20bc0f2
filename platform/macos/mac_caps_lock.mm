#include "platform/caps_lock.hpp"
#include "platform/macos/mac_factories.hpp"

#import <IOKit/IOKitLib.h>
#import <IOKit/hidsystem/IOHIDLib.h>
#import <IOKit/hidsystem/IOHIDShared.h>

namespace orvel::macos {

namespace {

class MacCapsLock final : public CapsLock {
public:
    [[nodiscard]] CapsLockOutcome set(bool on) override {
        const io_service_t service =
            IOServiceGetMatchingService(kIOMainPortDefault, IOServiceMatching(kIOHIDSystemClass));
        if (service == 0) return CapsLockOutcome::noService;
        io_connect_t connection = 0;
        const kern_return_t opened =
            IOServiceOpen(service, mach_task_self(), kIOHIDParamConnectType, &connection);
        IOObjectRelease(service);
        if (opened != kIOReturnSuccess) return CapsLockOutcome::notOpened;
        IOHIDSetModifierLockState(connection, kIOHIDCapsLockState, on);
        IOServiceClose(connection);
        return CapsLockOutcome::done;
    }
};

}  // namespace

std::unique_ptr<CapsLock> makeCapsLock() { return std::make_unique<MacCapsLock>(); }

}  // namespace orvel::macos
