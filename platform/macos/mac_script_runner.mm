#include "platform/script_runner.hpp"

#include "platform/macos/mac_factories.hpp"
#include "platform/macos/mac_text.hpp"

#import <Foundation/Foundation.h>

#include <mutex>

namespace orvel::macos {

namespace {

class MacScriptRunner final : public ScriptRunner {
public:
    Result<std::string> run(std::string_view source) override {
        // The script engine is one for the whole process.
        const std::lock_guard lock(oneAtATime_);
        @autoreleasepool {
            const auto text = cfString(source);
            NSAppleScript* script =
                [[NSAppleScript alloc] initWithSource:(__bridge NSString*)text.get()];
            NSDictionary* error = nil;
            NSAppleEventDescriptor* result = [script executeAndReturnError:&error];
            if (result == nil) return Failure{utf8(error.description)};
            return utf8(result.stringValue);
        }
    }

private:
    std::mutex oneAtATime_;
};

}  // namespace

std::unique_ptr<ScriptRunner> makeScriptRunner() { return std::make_unique<MacScriptRunner>(); }

}  // namespace orvel::macos
