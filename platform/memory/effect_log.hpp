#pragma once

#include "platform/base/json.hpp"
#include "platform/run_loop.hpp"

#include <cstdint>
#include <string>
#include <string_view>

namespace orvel::memory {

/// What the system does to the desktop, one line of JSON per effect, in order.
class EffectLog {
public:
    /// The line of one effect: write the effect's value, then let the line go.
    class Line {
    public:
        Line(const Line&) = delete;
        Line& operator=(const Line&) = delete;
        ~Line() { log_.finish(); }

        JsonWriter* operator->() { return &log_.line_; }
        JsonWriter& operator*() { return log_.line_; }

    private:
        friend class EffectLog;
        explicit Line(EffectLog& log) : log_(log) {}
        EffectLog& log_;
    };

    /// The stamps of the lines that follow.
    void setStep(std::int64_t line) { step_ = line; }
    void setTime(Instant now) { now_ = now; }
    void setInBackground(bool inBackground) { inBackground_ = inBackground; }
    /// From now on nothing is kept any more.
    void mute() { isMuted_ = true; }

    /// Begins the line of the effect `name`. One line at a time.
    [[nodiscard]] Line effect(std::string_view name);

    /// The lines since the last `clear`, each with its line break.
    [[nodiscard]] const std::string& text() const { return text_; }
    void clear() { text_.clear(); }

private:
    void finish();

    JsonWriter line_;
    std::string text_;
    Instant now_{0};
    std::int64_t step_ = 0;
    bool inBackground_ = false;
    bool isMuted_ = false;
};

}  // namespace orvel::memory
