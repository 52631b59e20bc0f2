#include "platform/macos/mac_checks.hpp"

#include "platform/macos/mac_property_list.hpp"
#include "platform/macos/mac_running_note.hpp"
#include "platform/macos/mac_session.hpp"
#include "platform/macos/mac_tap_guard.hpp"
#include "platform/macos/mac_text.hpp"
#include "platform/macos/mac_user_defaults.hpp"

#import <AppKit/AppKit.h>
#import <ApplicationServices/ApplicationServices.h>
#import <CoreServices/CoreServices.h>
#import <ServiceManagement/ServiceManagement.h>

#include <unistd.h>
#include <array>
#include <span>
#include <string>
#include <utility>

namespace orvel::macos {

namespace {

/// What is true, or else what is wrong and what helps.
struct Words {
    std::string good = {};
    std::string bad = {};
    std::string remedy = {};
};

ServiceCheck judge(std::string name, bool isOk, bool isEssential, Words words) {
    return {.name = std::move(name),
            .isOk = isOk,
            .isEssential = isEssential,
            .finding = std::move(isOk ? words.good : words.bad),
            .remedy = isOk ? std::string() : std::move(words.remedy)};
}

ServiceCheck checkBundle() {
    NSString* own = [NSString stringWithUTF8String:kBundleIdentifier];
    return judge("bundle", [NSBundle.mainBundle.bundleIdentifier isEqualToString:own], false,
                 {.good = kBundleIdentifier,
                  .bad = "this program runs outside of its bundle",
                  .remedy = "use the one in orvelkit.app"});
}

/// macOS judges a program by the one that started it.
ServiceCheck checkAsker() {
    const bool isOwnStart = ::getppid() == 1;
    return judge("answers", true, false,
                 {.good = isOwnStart ? "are about this program"
                                     : "may be about the program that started this one, such as "
                                       "a terminal; the line 'running' is about Orvel alone"});
}

std::optional<bool> hasTapOn(ProcessId pid) {
    std::array<CGEventTapInformation, 64> taps{};
    std::uint32_t count = 0;
    if (CGGetEventTapList(taps.size(), taps.data(), &count) != kCGErrorSuccess) return {};
    for (const CGEventTapInformation& tap : std::span(taps).first(count)) {
        if (tap.tappingProcess == pid) return tap.enabled;
    }
    return std::nullopt;
}

ServiceCheck checkRunning() {
    const auto pid = runningProcess();
    if (!pid) return judge("running", true, false, {.good = "no"});
    const auto isOn = hasTapOn(*pid);
    return judge(
        "running", isOn.value_or(false), false,
        {.good = "yes, and it sees the input",
         .bad = isOn ? "yes, but its event tap is switched off" : "yes, but it has no event tap",
         .remedy = "grant accessibility to Orvel and start it again"});
}

ServiceCheck checkAccessibility() {
    return judge("accessibility", AXIsProcessTrusted(), true,
                 {.good = "granted",
                  .bad = "not granted: no key can be changed and no window be moved",
                  .remedy = "tick Orvel in System Settings > Privacy & Security > Accessibility; "
                            "when it is ticked already, remove it and add it again"});
}

ServiceCheck checkTap() {
    return judge("event tap", TapGuard::canTap(), true,
                 {.good = "can be made",
                  .bad = "the system makes none",
                  .remedy = "grant accessibility, then start Orvel again"});
}

ServiceCheck checkPosting() {
    return judge("posting keys", CGPreflightPostEventAccess(), true,
                 {.good = "granted",
                  .bad = "not granted: no shortcut reaches an application",
                  .remedy = "grant accessibility, then start Orvel again"});
}

ServiceCheck checkScreenRecording() {
    return judge("screen recording", CGPreflightScreenCaptureAccess(), false,
                 {.good = "granted",
                  .bad = "not granted: window previews have no pictures",
                  .remedy = "tick Orvel in System Settings > Privacy & Security > Screen "
                            "Recording, if previews are wanted"});
}

struct Automated {
    const char* identifier;
    const char* name;
    const char* use;
};
constexpr std::array kAutomated{
    Automated{"com.apple.finder", "Finder", "folder shortcuts and the Finder menu"},
    Automated{"com.apple.systemevents", "System Events", "the Dock, power and window actions"},
};

ServiceCheck checkAutomation(const Automated& target) {
    NSAppleEventDescriptor* address = [NSAppleEventDescriptor
        descriptorWithBundleIdentifier:[NSString stringWithUTF8String:target.identifier]];
    const OSStatus status =
        AEDeterminePermissionToAutomateTarget(address.aeDesc, typeWildCard, typeWildCard, false);
    const std::string name = std::string("automation of ") + target.name;
    const std::string lost = std::string(": without it ") + target.use + " do nothing";
    if (status == procNotFound) {
        return judge(name, true, false, {.good = "it does not run now, so that macOS cannot tell"});
    }
    if (status == errAEEventWouldRequireUserConsent) {
        return judge(name, false, false,
                     {.bad = "not asked for yet" + lost,
                      .remedy = "answer yes when macOS asks at the first use"});
    }
    return judge(name, status == noErr, false,
                 {.good = "granted",
                  .bad = "refused" + lost,
                  .remedy = "tick it below Orvel in System Settings > Privacy & Security > "
                            "Automation"});
}

std::string nameOf(std::optional<ProcessId> pid) {
    if (!pid) return "some program";
    NSRunningApplication* owner =
        [NSRunningApplication runningApplicationWithProcessIdentifier:*pid];
    return utf8(owner.localizedName) + " (process " + std::to_string(*pid) + ")";
}

ServiceCheck checkSecureInput() {
    const SessionState session = readSession();
    return judge("secure input", !session.isSecureInput, false,
                 {.good = "off",
                  .bad = nameOf(session.secureInputOwner) +
                         " has it on: keys have no rules, and nothing is recorded or traced",
                  .remedy = "leave its password field; if it stays on, end that program"});
}

ServiceCheck checkSettings() {
    return judge("settings", userDefaults() != nullptr, false,
                 {.good = std::string("the defaults of ") + kBundleIdentifier,
                  .bad = "the system gives no settings: the defaults apply",
                  .remedy = "start orvelkit.app"});
}

ServiceCheck checkDock() {
    const std::string path = utf8(NSHomeDirectory()) + "/Library/Preferences/com.apple.dock.plist";
    const auto file = cfString(path);
    NSData* data = [NSData dataWithContentsOfFile:(__bridge NSString*)file.get()];
    const auto* bytes = static_cast<const std::byte*>(data.bytes);
    const Result<Json> list = jsonOfPropertyList({bytes, data.length});
    const bool hasApps = list && list.value().member("persistent-apps") != nullptr;
    return judge("Dock", hasApps, false,
                 {.good = path,
                  .bad = path + " cannot be read: the taskbar starts without the Dock's "
                                "applications, and Win+digit without it opens nothing",
                  .remedy = "look at the file's permissions, or 'killall Dock' to have it "
                            "written anew"});
}

ServiceCheck checkLoginItem() {
    switch (SMAppService.mainAppService.status) {
        case SMAppServiceStatusEnabled:
            return judge("login item", true, false, {.good = "starts with the session"});
        case SMAppServiceStatusRequiresApproval:
            return judge("login item", false, false,
                         {.bad = "registered, but macOS does not start it",
                          .remedy = "allow Orvel in System Settings > General > Login Items"});
        case SMAppServiceStatusNotRegistered:
        case SMAppServiceStatusNotFound:
            break;
    }
    return judge("login item", true, false, {.good = "does not start with the session"});
}

}  // namespace

std::vector<ServiceCheck> checkMac() {
    @autoreleasepool {
        std::vector<ServiceCheck> checks{checkBundle(),         checkRunning(), checkAsker(),
                                         checkAccessibility(),  checkTap(),     checkPosting(),
                                         checkScreenRecording()};
        for (const Automated& target : kAutomated) checks.push_back(checkAutomation(target));
        checks.push_back(checkSecureInput());
        checks.push_back(checkSettings());
        checks.push_back(checkDock());
        checks.push_back(checkLoginItem());
        return checks;
    }
}

}  // namespace orvel::macos
