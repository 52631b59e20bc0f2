#pragma once

#include "platform/login_items.hpp"

#include <string>

namespace orvel::x11 {

/// Start with the session by an entry in the autostart folder of the user.
class X11LoginItems final : public LoginItems {
public:
    /// `program` is the file to start.
    explicit X11LoginItems(std::string program) : program_(std::move(program)) {}

    /// An entry that already starts something is left as its owner wrote it.
    Result<> registerProgram() override;
    /// Where the system starts the program for everybody, an entry that hides it takes the place.
    Result<> unregisterProgram() override;

private:
    std::string program_;
};

}  // namespace orvel::x11
