#include "platform/macos/mac_action_target.hpp"

#import <Foundation/Foundation.h>

@interface OrvelActionTarget : NSObject {
    void (^_told)(id sender);
}
- (instancetype)initWithBlock:(void (^)(id sender))told;
- (void)act:(id)sender;
@end

@implementation OrvelActionTarget
- (instancetype)initWithBlock:(void (^)(id sender))told {
    self = [super init];
    if (self != nil) _told = [told copy];
    return self;
}
- (void)act:(id)sender {
    _told(sender);
}
@end

namespace orvel::macos {

CfRef<CFTypeRef> makeActionTarget(std::function<void(CFTypeRef sender)> told) {
    OrvelActionTarget* target = [[OrvelActionTarget alloc] initWithBlock:^(id sender) {
      told((__bridge CFTypeRef)sender);
    }];
    return CfRef<CFTypeRef>(CFBridgingRetain(target));
}

SEL targetAction() { return @selector(act:); }

}  // namespace orvel::macos
