#pragma once

#include "platform/base/json.hpp"
#include "platform/base/typed_secrecy.hpp"
#include "platform/event_poster.hpp"
#include "platform/event_tap.hpp"
#include "platform/log.hpp"
#include "platform/preference_store.hpp"
#include "platform/run_loop.hpp"

#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orvel {

/// What a recorder asks of the session.
struct RecorderSources {
    RunLoop& runLoop;
    /// What is secret is never written, and nothing is before that is known.
    const TypedSecrecy& secrecy;
    std::function<std::optional<std::string>()> frontmostApplication;
    PreferenceStore& settings;
};

/// Writes a live session as replay steps: the settings, the application in front, every event with
/// the time that passed before it. What the system did follows each event as a comment line, in
/// the form of the transcript. Lines wait in memory until it is known that they hold no secret.
class Recorder {
public:
    Recorder(std::ostream& out, RecorderSources sources);

    /// The steps that come before all events. The clipboard history is always left out.
    void begin();
    /// Lets the handler decide and writes both down.
    EventVerdict record(Event& event, const EventHandler& handler);
    /// What the system did, one member of a transcript line.
    void effect(std::string_view name, const std::function<void(JsonWriter&)>& value);
    /// Writes what is known to be no secret by now. What never gets known is never written.
    void release();

private:
    using Text = std::shared_ptr<const std::string>;

    /// What the session was like when an event came.
    struct Circumstances {
        Instant time{0};
        Text settings;
        std::optional<std::string> frontmost;
    };
    /// One of the settings that are written down, as it was seen last.
    struct Setting {
        std::string_view name;
        PreferenceHandle handle = 0;
        std::optional<PreferenceValue> seen;
    };
    struct Entry {
        std::string line;
        std::optional<Circumstances> circumstances;  ///< of an event
    };

    [[nodiscard]] Circumstances look();
    [[nodiscard]] bool takeChanges();
    [[nodiscard]] Text settingsStep();
    void hold(std::string line, std::optional<Circumstances> circumstances = std::nullopt);
    void write(const Entry& entry);
    void writeCircumstances(const Circumstances& seen);
    void writeTime(Instant time);

    std::ostream& out_;
    RecorderSources sources_;
    std::vector<Setting> settings_;  ///< in the order of their names
    Text lastSettings_ = std::make_shared<const std::string>();
    Instant written_{0};
    Text writtenSettings_ = lastSettings_;
    std::optional<std::string> writtenFrontmost_;
    Withheld<Entry> withheld_;
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
