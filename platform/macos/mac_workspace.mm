#include "platform/workspace.hpp"

#include "platform/macos/mac_factories.hpp"
#include "platform/macos/mac_observation.hpp"
#include "platform/macos/mac_picture.hpp"
#include "platform/macos/mac_text.hpp"

#import <AppKit/AppKit.h>

namespace orvel::macos {

namespace {

constexpr std::string_view kBundleEnding = ".app";
/// Large enough for every place that shows an icon, at double scale.
constexpr CGFloat kIconPoints = 128;

std::optional<std::string> optionalText(NSString* string) {
    if (string == nil) return std::nullopt;
    return utf8(string);
}

ActivationPolicy policyOf(NSRunningApplication* application) {
    switch (application.activationPolicy) {
        case NSApplicationActivationPolicyRegular:
            return ActivationPolicy::regular;
        case NSApplicationActivationPolicyAccessory:
            return ActivationPolicy::accessory;
        case NSApplicationActivationPolicyProhibited:
            break;
    }
    return ActivationPolicy::prohibited;
}

RunningApplication describe(NSRunningApplication* application) {
    return {.pid = application.processIdentifier,
            .bundleId = optionalText(application.bundleIdentifier),
            .name = utf8(application.localizedName),
            .path = optionalText(application.bundleURL.path),
            .policy = policyOf(application),
            .isActive = static_cast<bool>(application.isActive),
            .isHidden = static_cast<bool>(application.isHidden),
            .isTerminated = static_cast<bool>(application.isTerminated)};
}

std::optional<FrontmostApplication> describeFrontmost(NSRunningApplication* application) {
    if (application == nil) return std::nullopt;
    return FrontmostApplication{.pid = application.processIdentifier,
                                .bundleId = optionalText(application.bundleIdentifier)};
}

class MacWorkspace final : public Workspace {
public:
    MacWorkspace()
        : frontmost_(describeFrontmost(NSWorkspace.sharedWorkspace.frontmostApplication)),
          activations_(NoticeCenter::workspace,
                       (__bridge CFStringRef)NSWorkspaceDidActivateApplicationNotification,
                       [this](CFTypeRef notification) { didActivate(notification); }),
          ends_(NoticeCenter::workspace,
                (__bridge CFStringRef)NSWorkspaceDidTerminateApplicationNotification,
                [this](CFTypeRef notification) { didEnd(notification); }) {}

    [[nodiscard]] std::optional<FrontmostApplication> frontmostApplication() const override {
        return frontmost_;
    }

    [[nodiscard]] std::vector<RunningApplication> runningApplications() const override {
        @autoreleasepool {
            std::vector<RunningApplication> running;
            for (NSRunningApplication* application in NSWorkspace.sharedWorkspace
                     .runningApplications) {
                running.push_back(describe(application));
            }
            return running;
        }
    }

    [[nodiscard]] std::optional<std::string> applicationPath(
        std::string_view bundleId) const override {
        @autoreleasepool {
            const auto identifier = cfString(bundleId);
            NSURL* url = [NSWorkspace.sharedWorkspace
                URLForApplicationWithBundleIdentifier:(__bridge NSString*)identifier.get()];
            return optionalText(url.path);
        }
    }

    [[nodiscard]] std::string displayName(std::string_view path) const override {
        @autoreleasepool {
            const auto file = cfString(path);
            std::string name = utf8(
                [NSFileManager.defaultManager displayNameAtPath:(__bridge NSString*)file.get()]);
            if (name.ends_with(kBundleEnding)) name.resize(name.size() - kBundleEnding.size());
            return name;
        }
    }

    [[nodiscard]] Picture icon(std::string_view path) const override {
        @autoreleasepool {
            const auto file = cfString(path);
            NSImage* image =
                [NSWorkspace.sharedWorkspace iconForFile:(__bridge NSString*)file.get()];
            NSRect wanted = NSMakeRect(0, 0, kIconPoints, kIconPoints);
            return pictureOf([image CGImageForProposedRect:&wanted context:nil hints:nil]);
        }
    }

    void activate(ProcessId pid, int options) override {
        @autoreleasepool {
            [[NSRunningApplication runningApplicationWithProcessIdentifier:pid]
                activateWithOptions:static_cast<NSApplicationActivationOptions>(options)];
        }
    }

    void terminate(ProcessId pid) override {
        @autoreleasepool {
            [[NSRunningApplication runningApplicationWithProcessIdentifier:pid] terminate];
        }
    }

private:
    void didActivate(CFTypeRef notification) {
        NSNotification* told = (__bridge NSNotification*)notification;
        frontmost_ = describeFrontmost([told.userInfo objectForKey:NSWorkspaceApplicationKey]);
    }

    /// The next one need not have come to the front by now, nor ever.
    void didEnd(CFTypeRef notification) {
        NSNotification* told = (__bridge NSNotification*)notification;
        NSRunningApplication* ended = [told.userInfo objectForKey:NSWorkspaceApplicationKey];
        if (!frontmost_ || frontmost_->pid != ended.processIdentifier) return;
        NSRunningApplication* next = NSWorkspace.sharedWorkspace.frontmostApplication;
        const bool isSame = next.processIdentifier == ended.processIdentifier;
        frontmost_ = isSame ? std::nullopt : describeFrontmost(next);
    }

    /// Kept up to date by the system's notices: asked on every key.
    std::optional<FrontmostApplication> frontmost_;
    Observation activations_;
    Observation ends_;
};

}  // namespace

std::unique_ptr<Workspace> makeWorkspace() { return std::make_unique<MacWorkspace>(); }

}  // namespace orvel::macos
