#include "platform/macos/mac_observation.hpp"

#import <AppKit/AppKit.h>

namespace orvel::macos {

namespace {

NSNotificationCenter* centerOf(NoticeCenter center) {
    switch (center) {
        case NoticeCenter::workspace:
            return NSWorkspace.sharedWorkspace.notificationCenter;
        case NoticeCenter::distributed:
            return [NSDistributedNotificationCenter defaultCenter];
        case NoticeCenter::application:
            break;
    }
    return NSNotificationCenter.defaultCenter;
}

}  // namespace

Observation::Observation(NoticeCenter center, CFStringRef name, NoticeHandler handler)
    : center_(center) {
    id token = [centerOf(center) addObserverForName:(__bridge NSString*)name
                                             object:nil
                                              queue:NSOperationQueue.mainQueue
                                         usingBlock:^(NSNotification* notification) {
                                           handler((__bridge CFTypeRef)notification);
                                         }];
    token_ = CfRef<CFTypeRef>(CFBridgingRetain(token));
}

Observation& Observation::operator=(Observation&& other) noexcept {
    std::swap(center_, other.center_);
    std::swap(token_, other.token_);
    return *this;
}

Observation::~Observation() {
    if (token_) [centerOf(center_) removeObserver:(__bridge id)token_.get()];
}

}  // namespace orvel::macos
