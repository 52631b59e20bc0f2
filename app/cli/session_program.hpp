#pragma once

#include <string>
#include <vector>

namespace orvel {

/// Becomes `orvel-session` with these arguments: it lies beside this program or in
/// ../libexec/orvel. Comes back only when it cannot be started, with the exit status to end with;
/// the reason is on standard error then.
int becomeSessionProgram(const std::vector<std::string>& arguments);

}  // namespace orvel
