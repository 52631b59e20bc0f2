// Pictures of windows from macOS 14 on, as far as the back end uses them.
#pragma once
#import <Foundation/Foundation.h>
#include <CoreGraphics/CoreGraphics.h>
#include <os/availability.h>

API_AVAILABLE(macos(12.3))
@interface SCWindow : NSObject
@property(readonly) CGWindowID windowID;
@property(readonly) CGRect frame;
@end

API_AVAILABLE(macos(12.3))
@interface SCShareableContent : NSObject
@property(readonly) NSArray<SCWindow*>* windows;
+ (void)getShareableContentExcludingDesktopWindows:(BOOL)excludeDesktopWindows
                               onScreenWindowsOnly:(BOOL)onScreenWindowsOnly
                                 completionHandler:(void (^)(SCShareableContent* content,
                                                             NSError* error))handler;
@end

API_AVAILABLE(macos(12.3))
@interface SCContentFilter : NSObject
@property(readonly) float pointPixelScale API_AVAILABLE(macos(14.0));
- (instancetype)initWithDesktopIndependentWindow:(SCWindow*)window;
@end

API_AVAILABLE(macos(12.3))
@interface SCStreamConfiguration : NSObject MAC_FAKED(size_t _width; size_t _height;
                                                     BOOL _showsCursor;
                                                     BOOL _ignoreShadowsSingleWindow;)
@property size_t width;
@property size_t height;
@property BOOL showsCursor;
@property BOOL ignoreShadowsSingleWindow API_AVAILABLE(macos(14.0));
@end

API_AVAILABLE(macos(14.0))
@interface SCScreenshotManager : NSObject
+ (void)captureImageWithFilter:(SCContentFilter*)filter
                 configuration:(SCStreamConfiguration*)configuration
             completionHandler:(void (^)(CGImageRef image, NSError* error))handler;
@end
