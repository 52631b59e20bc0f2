#include "app/mac/mac_program.hpp"

#include "app/cli/doctor_report.hpp"
#include "app/mac/mac_resident.hpp"
#include "app/record/record_file.hpp"
#include "platform/macos/mac_checks.hpp"
#include "platform/macos/mac_running_note.hpp"
#include "platform/macos/mac_settings_requests.hpp"

#import <AppKit/AppKit.h>

#include <cstdio>
#include <iostream>

namespace orvel::session {

namespace {

int fail(const std::string& message) {
    std::fprintf(stderr, "orvel: %s\n", message.c_str());
    return kFailed;
}

}  // namespace

int MacProgram::run(const SessionOptions& options) {
    if (!options.recordPath.empty()) {
        if (const auto made = makeRecordFile(options.recordPath); !made) return fail(made.error());
    }
    return runResident(options);
}

int MacProgram::openPanel() {
    if (!macos::readRunningNote())
        return fail("Orvel does not run in this session; start it with 'orvel run'");
    macos::requestSettings();
    return 0;
}

int MacProgram::doctor() {
    @autoreleasepool {
        // Some answers exist for applications only.
        [NSApplication.sharedApplication
            setActivationPolicy:NSApplicationActivationPolicyProhibited];
        return reportChecks(macos::checkMac(), std::cout);
    }
}

}  // namespace orvel::session
