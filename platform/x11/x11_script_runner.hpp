#pragma once

#include "platform/script_runner.hpp"
#include "platform/x11/script_interpreter.hpp"

#include <string>
#include <utility>

namespace orvel::x11 {

/// Understands the AppleScript texts that this system uses, and no other.
class X11ScriptRunner final : public ScriptRunner {
public:
    explicit X11ScriptRunner(SessionActors actors) : actors_(std::move(actors)) {}

    Result<std::string> run(std::string_view source) override;

private:
    SessionActors actors_;
};

}  // namespace orvel::x11
