#pragma once

#include "platform/base/result.hpp"

namespace orvel {

/// Whether this program starts with the login session. Main thread.
class LoginItems {
public:
    virtual ~LoginItems() = default;

    virtual Result<> registerProgram() = 0;
    virtual Result<> unregisterProgram() = 0;
};

}  // namespace orvel
