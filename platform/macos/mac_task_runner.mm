#include "platform/task_runner.hpp"

#include "platform/macos/mac_factories.hpp"
#include "platform/macos/mac_text.hpp"

#import <Foundation/Foundation.h>

namespace orvel::macos {

namespace {

NSTask* prepare(std::string_view path, const std::vector<std::string>& arguments) {
    NSMutableArray* texts = [NSMutableArray array];
    for (const std::string& argument : arguments) {
        const auto text = cfString(argument);
        [texts addObject:(__bridge NSString*)text.get()];
    }
    NSTask* task = [[NSTask alloc] init];
    const auto program = cfString(path);
    task.executableURL = [NSURL fileURLWithPath:(__bridge NSString*)program.get()];
    task.arguments = texts;
    return task;
}

Result<> start(NSTask* task) {
    NSError* error = nil;
    if ([task launchAndReturnError:&error]) return {};
    return failureOf(error);
}

std::string readToEnd(NSPipe* pipe) {
    NSData* output = [pipe.fileHandleForReading readDataToEndOfFile];
    return {static_cast<const char*>(output.bytes), output.length};
}

class MacTaskRunner final : public TaskRunner {
public:
    Result<std::string> run(std::string_view path,
                            const std::vector<std::string>& arguments) override {
        @autoreleasepool {
            NSTask* task = prepare(path, arguments);
            NSPipe* pipe = [NSPipe pipe];
            task.standardOutput = pipe;
            task.standardError = pipe;
            if (const Result<> started = start(task); !started) return Failure{started.error()};
            std::string output = readToEnd(pipe);
            [task waitUntilExit];
            return output;
        }
    }

    Result<> launch(std::string_view path, const std::vector<std::string>& arguments) override {
        @autoreleasepool {
            return start(prepare(path, arguments));
        }
    }
};

}  // namespace

std::unique_ptr<TaskRunner> makeTaskRunner() { return std::make_unique<MacTaskRunner>(); }

}  // namespace orvel::macos
