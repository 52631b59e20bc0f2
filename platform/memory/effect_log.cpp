#include "platform/memory/effect_log.hpp"

namespace orvel::memory {

namespace {

/// Seconds, rounded to whole milliseconds.
double roundedSeconds(Instant time) {
    const auto milliseconds = (time.count() + 500) / 1000;
    return static_cast<double>(milliseconds) / 1000.0;
}

}  // namespace

EffectLog::Line EffectLog::effect(std::string_view name) {
    line_.clear();
    line_.beginObject().member("step", step_).member("t", roundedSeconds(now_)).key(name);
    return Line(*this);
}

void EffectLog::finish() {
    if (isMuted_) return;
    if (inBackground_) line_.member("queue", "background");
    line_.endObject();
    text_ += line_.text();
    text_ += '\n';
}

}  // namespace orvel::memory
