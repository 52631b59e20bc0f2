#include "platform/macos/mac_user_defaults.hpp"

#import <Foundation/Foundation.h>

namespace orvel::macos {

namespace {

NSUserDefaults* openDefaults() {
    NSString* own = [NSString stringWithUTF8String:kBundleIdentifier];
    // The system refuses a program's own domain under this name.
    if ([NSBundle.mainBundle.bundleIdentifier isEqualToString:own])
        return NSUserDefaults.standardUserDefaults;
    return [[NSUserDefaults alloc] initWithSuiteName:own];
}

}  // namespace

CFTypeRef userDefaults() {
    static NSUserDefaults* const defaults = openDefaults();
    return (__bridge CFTypeRef)defaults;
}

}  // namespace orvel::macos
