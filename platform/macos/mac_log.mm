#include "platform/log.hpp"

#include "platform/base/private_log_file.hpp"
#include "platform/macos/mac_factories.hpp"
#include "platform/macos/mac_session.hpp"
#include "platform/macos/mac_text.hpp"

#import <Foundation/Foundation.h>

#include <cstdio>
#include <mutex>
#include <optional>

namespace orvel::macos {

namespace {

std::string tracePath() {
    @autoreleasepool {
        return utf8(NSHomeDirectory()) + "/Library/Logs/Orvel/trace.log";
    }
}

class MacLog final : public Log {
public:
    explicit MacLog(bool keepsTrace) {
        if (keepsTrace) trace_.emplace(tracePath());
    }

    void line(std::string_view text) override {
        const std::lock_guard lock(mutex_);
        std::fwrite(text.data(), 1, text.size(), stdout);
        std::fputc('\n', stdout);
        std::fflush(stdout);
    }

    [[nodiscard]] bool isTracing() const override { return trace_ && !isTypingSecret(); }

    void trace(std::string_view text) override {
        if (!isTracing()) return;
        const std::lock_guard lock(mutex_);
        trace_->write(text);
    }

private:
    std::mutex mutex_;
    std::optional<PrivateLogFile> trace_;
};

}  // namespace

std::unique_ptr<Log> makeLog(bool keepsTrace) { return std::make_unique<MacLog>(keepsTrace); }

}  // namespace orvel::macos
