#pragma once

#include <stdexcept>
#include <string>

namespace orvel::rig {

/// The rig itself could not do its work: a program is missing, a server did not start.
class RigError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Throws a RigError that ends in the text of the current errno.
[[noreturn]] void failWithErrno(const std::string& what);

}  // namespace orvel::rig
