#include "app/application.hpp"
#include "platform/log.hpp"
#include "platform/macos/mac_desktop.hpp"
#include "platform/macos/mac_observation.hpp"
#include "platform/run_loop.hpp"

#import <AppKit/AppKit.h>

#include <cstdlib>
#include <cstring>

namespace {

using namespace orvel;

/// Panels are empty frames until their views are put into them.
class EmptyContents final : public macos::PanelContents {
public:
    CFTypeRef viewOf(PanelId, double) override { return nullptr; }
};

bool asksForTrace(int count, char** arguments) {
    for (int i = 1; i < count; ++i) {
        if (std::strcmp(arguments[i], "--trace") == 0) return true;
    }
    const char* variable = std::getenv("ORVEL_TRACE");
    return variable != nullptr && std::strcmp(variable, "1") == 0;
}

}  // namespace

int main(int argc, char** argv) {
    @autoreleasepool {
        NSApplication* host = NSApplication.sharedApplication;
        [host setActivationPolicy:NSApplicationActivationPolicyAccessory];
        EmptyContents contents;
        const auto desktop = macos::makeDesktop(contents, {.keepsTrace = asksForTrace(argc, argv)});
        Application application(desktop->ports());
        // The system ends the process from inside its run loop, without coming back here.
        const macos::Observation end(
            macos::NoticeCenter::application,
            (__bridge CFStringRef)NSApplicationWillTerminateNotification,
            [&](CFTypeRef) { application.delegate().applicationWillTerminate(); });
        desktop->ports().runLoop.post(
            [&] { application.delegate().applicationDidFinishLaunching(); });
        [host run];
    }
    return 0;
}
