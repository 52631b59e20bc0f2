#include "engine/trace_log.hpp"

#include <cstdio>

namespace orvel {

void traceRewrite(Log& log, const Event& incoming, const Event& outgoing) {
    if (!log.isTracing()) return;
    char line[96];
    std::snprintf(line, sizeof line, "IN -> Type: %d, Key: %lld, Flags: 0x%llx",
                  static_cast<int>(incoming.type), static_cast<long long>(incoming.keyCode),
                  static_cast<unsigned long long>(incoming.flags));
    log.trace(line);
    std::snprintf(line, sizeof line, "PATCH -> Key: %lld, Flags: 0x%llx",
                  static_cast<long long>(outgoing.keyCode),
                  static_cast<unsigned long long>(outgoing.flags));
    log.trace(line);
}

}  // namespace orvel
