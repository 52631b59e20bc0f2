#pragma once

#include "platform/event.hpp"
#include "platform/log.hpp"

namespace orvel {

/// Traces a key-down that a rule rewrote: what came in and what went on.
void traceRewrite(Log& log, const Event& incoming, const Event& outgoing);

}  // namespace orvel
