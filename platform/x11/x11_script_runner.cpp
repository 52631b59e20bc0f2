#include "platform/x11/x11_script_runner.hpp"

namespace orvel::x11 {

Result<std::string> X11ScriptRunner::run(std::string_view source) {
    const auto action = parseScript(source);
    if (!action) return Failure{action.error()};
    return perform(action.value(), actors_);
}

}  // namespace orvel::x11
