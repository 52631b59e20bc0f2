#include "fake_support.hpp"

#import <CoreServices/CoreServices.h>
#import <ServiceManagement/ServiceManagement.h>

#include <unistd.h>

@interface FakeRunningApplication : NSRunningApplication {
@public
    int _pid;
}
@end

namespace {

using fake::Application;
using fake::world;

FakeRunningApplication* make(int pid) {
    if (!world().applications.contains(pid)) return nil;
    FakeRunningApplication* made = [[FakeRunningApplication new] autorelease];
    made->_pid = pid;
    return made;
}

Application& applicationOf(NSRunningApplication* application) {
    return world().applications[((FakeRunningApplication*)application)->_pid];
}

NSString* optionalText(const std::string& bytes) { return bytes.empty() ? nil : fake::text(bytes); }

std::string join(NSArray<NSURL*>* urls) {
    std::string joined;
    for (NSURL* url in urls) joined += " " + fake::bytes(url.path);
    return joined;
}

NSError* openError() {
    if (world().openError.empty()) return nil;
    NSDictionary* info = [NSDictionary dictionaryWithObject:fake::text(world().openError)
                                                     forKey:NSLocalizedDescriptionKey];
    return [NSError errorWithDomain:@"fake" code:1 userInfo:info];
}

/// The system answers from a thread of its own.
void answer(NSURL* application, void (^handler)(NSRunningApplication*, NSError*)) {
    if (handler == nil) return;
    if (world().refusedApplications.contains(fake::bytes(application.path)))
        world().openError = "no such application";
    auto kept = (void (^)(NSRunningApplication*, NSError*))[(id)handler copy];
    fake::runOnOtherThread([kept] { kept(nil, openError()); });
}

}  // namespace

@implementation NSRunningApplication
+ (instancetype)runningApplicationWithProcessIdentifier:(pid_t)pid {
    return make(pid);
}
+ (NSArray*)runningApplicationsWithBundleIdentifier:(NSString*)identifier {
    NSMutableArray* found = [NSMutableArray array];
    for (const auto& [pid, application] : world().applications) {
        if (application.bundleId == fake::bytes(identifier)) [found addObject:make(pid)];
    }
    return found;
}
- (pid_t)processIdentifier {
    return ((FakeRunningApplication*)self)->_pid;
}
- (NSString*)bundleIdentifier {
    return optionalText(applicationOf(self).bundleId);
}
- (NSString*)localizedName {
    return fake::text(applicationOf(self).name);
}
- (NSURL*)bundleURL {
    const std::string& path = applicationOf(self).path;
    return path.empty() ? nil : [NSURL fileURLWithPath:fake::text(path)];
}
- (NSApplicationActivationPolicy)activationPolicy {
    return (NSApplicationActivationPolicy)applicationOf(self).policy;
}
- (BOOL)isActive {
    return applicationOf(self).isActive;
}
- (BOOL)isHidden {
    return applicationOf(self).isHidden;
}
- (BOOL)isTerminated {
    return applicationOf(self).isTerminated;
}
- (BOOL)activateWithOptions:(NSApplicationActivationOptions)options {
    applicationOf(self).activations.push_back(static_cast<int>(options));
    return YES;
}
- (BOOL)terminate {
    applicationOf(self).isTerminated = true;
    return YES;
}
@end
@implementation FakeRunningApplication
@end

@implementation NSWorkspaceOpenConfiguration
@synthesize activates = _activates;
+ (instancetype)configuration {
    NSWorkspaceOpenConfiguration* made = [[self new] autorelease];
    made.activates = YES;
    return made;
}
@end

@implementation NSWorkspace
+ (NSWorkspace*)sharedWorkspace {
    static NSWorkspace* shared = [NSWorkspace new];
    return shared;
}
- (NSNotificationCenter*)notificationCenter {
    return fake::centerOf(fake::Center::workspace);
}
- (NSRunningApplication*)frontmostApplication {
    ++world().slowCalls;
    return make(world().frontmost);
}
- (NSArray*)runningApplications {
    ++world().slowCalls;
    NSMutableArray* running = [NSMutableArray array];
    for (const auto& [pid, application] : world().applications) [running addObject:make(pid)];
    return running;
}
- (void)openURL:(NSURL*)url
        configuration:(NSWorkspaceOpenConfiguration*)configuration
    completionHandler:(void (^)(NSRunningApplication*, NSError*))handler {
    world().launched.push_back("url " + fake::bytes(url.absoluteString));
}
- (void)openURLs:(NSArray<NSURL*>*)urls
    withApplicationAtURL:(NSURL*)application
           configuration:(NSWorkspaceOpenConfiguration*)configuration
       completionHandler:(void (^)(NSRunningApplication*, NSError*))handler {
    std::vector<std::string> files;
    for (NSURL* url in urls) files.push_back(fake::bytes(url.path));
    world().openings.push_back({fake::bytes(application.path), files});
    world().launched.push_back("files" + join(urls) + " with " + fake::bytes(application.path) +
                               (configuration.activates ? " activates" : ""));
    answer(application, handler);
}
- (void)openApplicationAtURL:(NSURL*)url
               configuration:(NSWorkspaceOpenConfiguration*)configuration
           completionHandler:(void (^)(NSRunningApplication*, NSError*))handler {
    world().openings.push_back({fake::bytes(url.path), {}});
    world().launched.push_back("application " + fake::bytes(url.path) +
                               (configuration.activates ? " activates" : ""));
    answer(url, handler);
}
- (NSURL*)URLForApplicationWithBundleIdentifier:(NSString*)identifier {
    const auto found = world().installed.find(fake::bytes(identifier));
    return found == world().installed.end() ? nil
                                            : [NSURL fileURLWithPath:fake::text(found->second)];
}
- (BOOL)accessibilityDisplayShouldReduceMotion {
    return world().reducesMotion;
}
- (BOOL)accessibilityDisplayShouldReduceTransparency {
    return world().reducesTransparency;
}
- (NSImage*)iconForFile:(NSString*)path {
    world().imageFiles.try_emplace("icon of " + fake::bytes(path), 256, 256);
    return [[[NSImage alloc] initWithContentsOfFile:[@"icon of " stringByAppendingString:path]]
        autorelease];
}
- (BOOL)selectFile:(NSString*)path inFileViewerRootedAtPath:(NSString*)root {
    ++world().slowCalls;
    world().launched.push_back("reveal " + fake::bytes(path) + " in " + fake::bytes(root));
    return YES;
}
@end

@interface FakePerformer : NSObject <NSHapticFeedbackPerformer>
@end
@implementation FakePerformer
- (void)performFeedbackPattern:(NSHapticFeedbackPattern)pattern
               performanceTime:(NSHapticFeedbackPerformanceTime)time {
    ++world().hapticTaps;
}
@end
@implementation NSHapticFeedbackManager
+ (id<NSHapticFeedbackPerformer>)defaultPerformer {
    return [[FakePerformer new] autorelease];
}
@end

@implementation SMAppService
+ (SMAppService*)mainAppService {
    return [[SMAppService new] autorelease];
}
- (SMAppServiceStatus)status {
    if (world().loginItemNeedsApproval) return SMAppServiceStatusRequiresApproval;
    return world().isLoginItem ? SMAppServiceStatusEnabled : SMAppServiceStatusNotRegistered;
}
- (BOOL)change:(BOOL)isLoginItem error:(NSError**)error {
    if (world().loginItemError.empty()) {
        world().isLoginItem = isLoginItem;
        return YES;
    }
    NSDictionary* info = [NSDictionary dictionaryWithObject:fake::text(world().loginItemError)
                                                     forKey:NSLocalizedDescriptionKey];
    *error = [NSError errorWithDomain:@"fake" code:1 userInfo:info];
    return NO;
}
- (BOOL)registerAndReturnError:(NSError**)error {
    return [self change:YES error:error];
}
- (BOOL)unregisterAndReturnError:(NSError**)error {
    return [self change:NO error:error];
}
@end

@interface FakeDescriptor : NSObject {
@public
    std::string _text;
}
@end
@implementation FakeDescriptor
- (NSString*)stringValue {
    return fake::text(_text);
}
- (const AEDesc*)aeDesc {
    return (const AEDesc*)(void*)self;
}
@end
@implementation FakeScript
- (instancetype)initWithSource:(NSString*)source {
    self = [super init];
    _source = [source retain];
    return self;
}
- (NSAppleEventDescriptor*)executeAndReturnError:(NSDictionary**)error {
    const fake::ScriptOutcome outcome = world().script(fake::bytes(_source));
    if (!outcome.text) {
        *error = [NSDictionary dictionaryWithObject:fake::text(outcome.error)
                                             forKey:@"NSAppleScriptErrorMessage"];
        return nil;
    }
    FakeDescriptor* made = [[FakeDescriptor new] autorelease];
    made->_text = *outcome.text;
    return (NSAppleEventDescriptor*)made;
}
@end

@implementation NSAppleEventDescriptor (MissingHere)
+ (NSAppleEventDescriptor*)descriptorWithBundleIdentifier:(NSString*)identifier {
    FakeDescriptor* made = [[FakeDescriptor new] autorelease];
    made->_text = fake::bytes(identifier);
    return (NSAppleEventDescriptor*)made;
}
@end
extern "C" OSStatus AEDeterminePermissionToAutomateTarget(const AEAddressDesc* target, AEEventClass,
                                                          AEEventID, Boolean asks) {
    if (asks) ++world().trustPrompts;
    return world().automation[((FakeDescriptor*)target)->_text];
}

@implementation NSUserDefaults (MissingHere)
- (instancetype)initWithSuiteName:(NSString*)name {
    [self release];
    return [[NSUserDefaults standardUserDefaults] retain];
}
@end

/// Replaces the library's own.
@implementation NSFileManager (OnThisMac)
- (BOOL)fileExistsAtPath:(NSString*)path {
    return access(path.fileSystemRepresentation, F_OK) == 0 ||
           world().existingFiles.contains(fake::bytes(path));
}
@end

@implementation NSTask (MissingHere)
- (NSURL*)executableURL {
    return [NSURL fileURLWithPath:[self launchPath]];
}
- (void)setExecutableURL:(NSURL*)url {
    [self setLaunchPath:url.path];
}
- (BOOL)launchAndReturnError:(NSError**)error {
    @try {
        [self launch];
        return YES;
    } @catch (NSException* exception) {
        NSDictionary* info = [NSDictionary dictionaryWithObject:exception.reason
                                                         forKey:NSLocalizedDescriptionKey];
        *error = [NSError errorWithDomain:@"fake" code:1 userInfo:info];
        return NO;
    }
}
@end
