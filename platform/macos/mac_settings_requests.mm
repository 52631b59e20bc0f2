#include "platform/macos/mac_settings_requests.hpp"

#import <AppKit/AppKit.h>

@interface OrvelReopening : NSObject <NSApplicationDelegate> {
    void (^_asked)(void);
}
- (instancetype)initWithBlock:(void (^)(void))asked;
@end

@implementation OrvelReopening
- (instancetype)initWithBlock:(void (^)(void))asked {
    self = [super init];
    if (self != nil) _asked = [asked copy];
    return self;
}
- (BOOL)applicationShouldHandleReopen:(NSApplication*)application
                    hasVisibleWindows:(BOOL)hasVisibleWindows {
    _asked();
    return NO;
}
@end

namespace orvel::macos {

namespace {

CFStringRef noticeName() { return CFSTR("app.orvel.orvelkit.openSettings"); }

}  // namespace

SettingsRequests::SettingsRequests(std::function<void()> asked)
    : notices_(NoticeCenter::distributed, noticeName(), [asked](CFTypeRef) { asked(); }) {
    OrvelReopening* delegate = [[OrvelReopening alloc] initWithBlock:^{
      asked();
    }];
    delegate_ = CfRef<CFTypeRef>(CFBridgingRetain(delegate));
    NSApp.delegate = delegate;
}

SettingsRequests::~SettingsRequests() { NSApp.delegate = nil; }

void requestSettings() {
    // A program that is not in front would else hear it when it comes there.
    [[NSDistributedNotificationCenter defaultCenter]
        postNotificationName:(__bridge NSString*)noticeName()
                      object:nil
                    userInfo:nil
          deliverImmediately:YES];
}

}  // namespace orvel::macos
