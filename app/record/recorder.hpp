#pragma once

#include "platform/base/json.hpp"
#include "platform/event_poster.hpp"
#include "platform/event_tap.hpp"
#include "platform/log.hpp"
#include "platform/preference_store.hpp"
#include "platform/run_loop.hpp"

#include <functional>
#include <map>
#include <optional>
#include <ostream>
#include <span>
#include <string>
#include <string_view>

namespace orvel {

/// What a recorder asks of the session.
struct RecorderSources {
    RunLoop& runLoop;
    /// Whether a password may be typed at this moment; nothing is written then.
    std::function<bool()> isSecretTyped;
    std::function<std::optional<std::string>()> frontmostApplication;
    std::function<std::map<std::string, PreferenceValue, std::less<>>()> settings;
};

/// Writes a live session as replay steps: the settings, the application in front, every event with
/// the time that passed before it. What the system did follows each event as a comment line, in
/// the form of the transcript.
class Recorder {
public:
    Recorder(std::ostream& out, RecorderSources sources);

    /// The steps that come before all events. The clipboard history is always left out.
    void begin();
    /// Lets the handler decide and writes both down.
    EventVerdict record(Event& event, const EventHandler& handler);
    /// What the system did, one member of a transcript line.
    void effect(std::string_view name, const std::function<void(JsonWriter&)>& value);

private:
    void writeTime();
    void writeSettings();
    void writeWorld();
    void writeEvent(const Event& event);
    void writeDecision(EventVerdict verdict, const Event& event);
    void step(const JsonWriter& json);

    std::ostream& out_;
    RecorderSources sources_;
    Instant written_{0};
    std::string settings_;
    std::optional<std::string> frontmost_;
    bool isSilent_ = false;
};

/// The tap, with every event written down.
class RecordingTap final : public EventTap {
public:
    RecordingTap(EventTap& tap, Recorder& recorder) : tap_(tap), recorder_(recorder) {}

    [[nodiscard]] bool create(const EventTapRequest& request, EventHandler handler) override;
    void enable() override { tap_.enable(); }
    [[nodiscard]] bool exists() const override { return tap_.exists(); }
    [[nodiscard]] bool isEnabled() const override { return tap_.isEnabled(); }

private:
    EventTap& tap_;
    Recorder& recorder_;
};

/// The poster, with every posted key written down.
class RecordingPoster final : public EventPoster {
public:
    RecordingPoster(EventPoster& poster, Recorder& recorder)
        : poster_(poster), recorder_(recorder) {}

    bool postKeys(EventSourceState source, std::span<const PostedKey> keys) override;
    bool postMediaKeys(std::span<const PostedMediaKey> keys) override;

private:
    EventPoster& poster_;
    Recorder& recorder_;
};

/// The log, with every line written down.
class RecordingLog final : public Log {
public:
    RecordingLog(Log& log, Recorder& recorder) : log_(log), recorder_(recorder) {}

    void line(std::string_view text) override;
    [[nodiscard]] bool isTracing() const override { return log_.isTracing(); }
    void trace(std::string_view text) override { log_.trace(text); }

private:
    Log& log_;
    Recorder& recorder_;
};

}  // namespace orvel
