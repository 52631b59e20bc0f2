#include "platform/launcher.hpp"

#include "platform/macos/mac_factories.hpp"
#include "platform/macos/mac_text.hpp"
#include "platform/run_loop.hpp"

#import <AppKit/AppKit.h>

#include <array>

namespace orvel::macos {

namespace {

/// Where applications stand that people call by name.
constexpr std::array kApplicationFolders{"/System/Applications", "/Applications",
                                         "/System/Applications/Utilities",
                                         "/Applications/Utilities", "/System/Library/CoreServices"};

NSURL* fileUrl(std::string_view path) {
    const auto file = cfString(path);
    return [NSURL fileURLWithPath:(__bridge NSString*)file.get()];
}

NSURL* applicationNamed(std::string_view name) {
    for (const char* folder : kApplicationFolders) {
        NSURL* url = fileUrl(std::string(folder) + "/" + std::string(name) + ".app");
        if ([NSFileManager.defaultManager fileExistsAtPath:url.path]) return url;
    }
    return nil;
}

NSWorkspaceOpenConfiguration* configuration(std::optional<bool> activates) {
    NSWorkspaceOpenConfiguration* wanted = [NSWorkspaceOpenConfiguration configuration];
    if (activates) wanted.activates = *activates;
    return wanted;
}

void open(NSURL* application, std::optional<bool> activates) {
    if (application == nil) return;
    [NSWorkspace.sharedWorkspace openApplicationAtURL:application
                                        configuration:configuration(activates)
                                    completionHandler:nil];
}

Result<> outcome(NSError* error) {
    if (error == nil) return {};
    return failureOf(error);
}

class MacLauncher final : public Launcher {
public:
    explicit MacLauncher(RunLoop& runLoop) : runLoop_(runLoop) {}

    void openApplication(std::string_view path, std::optional<bool> activates) override {
        @autoreleasepool {
            open(fileUrl(path), activates);
        }
    }

    void openApplicationNamed(std::string_view name) override {
        @autoreleasepool {
            open(applicationNamed(name), std::nullopt);
        }
    }

    void openFiles(const std::vector<std::string>& paths, std::string_view applicationPath,
                   bool activates, OpenCompletion completion) override {
        @autoreleasepool {
            NSMutableArray* urls = [NSMutableArray array];
            for (const std::string& path : paths) [urls addObject:fileUrl(path)];
            RunLoop* runLoop = &runLoop_;
            [NSWorkspace.sharedWorkspace openURLs:urls
                             withApplicationAtURL:fileUrl(applicationPath)
                                    configuration:configuration(activates)
                                completionHandler:^(NSRunningApplication*, NSError* error) {
                                  if (!completion) return;
                                  const Result<> result = outcome(error);
                                  runLoop->post([completion, result] { completion(result); });
                                }];
        }
    }

    void openUrl(std::string_view url) override {
        @autoreleasepool {
            const auto address = cfString(url);
            NSURL* parsed = [NSURL URLWithString:(__bridge NSString*)address.get()];
            if (parsed == nil) return;
            // Without waiting for the program that takes it: a key may be held up by this call.
            [NSWorkspace.sharedWorkspace openURL:parsed
                                   configuration:configuration(std::nullopt)
                               completionHandler:nil];
        }
    }

    void revealInFileManager(std::string_view root) override {
        // The file manager answers before the call returns, so that a key must not wait for it.
        runLoop_.post([path = std::string(root)] {
            const auto folder = cfString(path);
            [NSWorkspace.sharedWorkspace selectFile:nil
                           inFileViewerRootedAtPath:(__bridge NSString*)folder.get()];
        });
    }

private:
    RunLoop& runLoop_;
};

}  // namespace

std::unique_ptr<Launcher> makeLauncher(RunLoop& runLoop) {
    return std::make_unique<MacLauncher>(runLoop);
}

}  // namespace orvel::macos
