#pragma once

#include "platform/base/result.hpp"
#include "platform/x11/script_text.hpp"
#include "platform/x11/service_check.hpp"

#include <functional>
#include <string>
#include <string_view>

namespace orvel::x11 {

/// Locks, suspends and ends the session and the machine, through logind; where the desktop has a
/// screen saver or session manager of its own that must be asked, that one too. Any thread.
class PowerService {
public:
    struct Options {
        /// Says what would be done and does nothing.
        bool isDryRun = false;
        /// One line for each act of a dry run.
        std::function<void(std::string_view)> say;
    };

    explicit PowerService(Options options) : options_(std::move(options)) {}

    Result<> perform(script::PowerAction action) const;
    [[nodiscard]] static ServiceCheck check();

private:
    Options options_;
};

}  // namespace orvel::x11
