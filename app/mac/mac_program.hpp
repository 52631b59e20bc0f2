#pragma once

#include "app/cli/session_command.hpp"

#include <string>

namespace orvel::session {

/// This program in a login session of macOS.
class MacProgram final : public SessionProgram {
public:
    [[nodiscard]] std::string traceFile() const override {
        return "~/Library/Logs/Orvel/trace.log";
    }
    int run(const SessionOptions& options) override;
    int openPanel() override;
    int doctor() override;
};

}  // namespace orvel::session
