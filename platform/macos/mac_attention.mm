#include "platform/macos/mac_attention.hpp"

#import <Foundation/Foundation.h>

namespace orvel::macos {

Attention::Attention() {
    @autoreleasepool {
        id activity = [NSProcessInfo.processInfo
            beginActivityWithOptions:NSActivityUserInitiatedAllowingIdleSystemSleep
                              reason:@"Keyboard and mouse input passes through this program"];
        activity_ = CfRef<CFTypeRef>(CFBridgingRetain(activity));
    }
}

Attention::~Attention() { [NSProcessInfo.processInfo endActivity:(__bridge id)activity_.get()]; }

}  // namespace orvel::macos
