#include "app/record/recorder.hpp"

#include "app/preference_keys.hpp"
#include "platform/base/base64.hpp"
#include "platform/memory/event_names.hpp"

#include <algorithm>
#include <type_traits>
#include <utility>

namespace orvel {

namespace {

constexpr double kMicrosecondsPerSecond = 1e6;
/// Bytes that wait for a decision at most: minutes of typing.
constexpr std::size_t kMostHeld = 1U << 20U;

void writeValue(JsonWriter& json, const PreferenceValue& value) {
    std::visit(
        [&json](const auto& content) {
            using Content = std::decay_t<decltype(content)>;
            if constexpr (std::is_same_v<Content, StringList>) {
                json.beginArray();
                for (const std::string& text : content) json.value(text);
                json.endArray();
            } else if constexpr (std::is_same_v<Content, PreferenceData>) {
                json.beginObject().member("data", base64Encode(content)).endObject();
            } else if constexpr (std::is_same_v<Content, ForeignPreference>) {
                json.null();
            } else {
                json.value(content);
            }
        },
        value);
}

bool isSame(const std::optional<PreferenceValue>& seen, const PreferenceValue* stored) {
    return stored == nullptr ? !seen : seen && *seen == *stored;
}

bool isMouse(EventType type) {
    return type == EventType::otherMouseDown || type == EventType::otherMouseUp;
}

std::int64_t number(EventFlags flags) { return static_cast<std::int64_t>(flags); }

std::string eventStep(const Event& event) {
    JsonWriter json;
    json.beginObject().key("event").beginObject();
    json.member("type", memory::eventTypeName(event.type));
    if (isMouse(event.type)) {
        json.member("button", event.buttonNumber);
    } else if (event.type == EventType::scrollWheel) {
        json.member("deltaAxis1", event.deltaAxis1)
            .member("pointDeltaAxis1", event.pointDeltaAxis1);
        if (event.hasPreciseScrollingDeltas) json.member("precise", true);
    } else {
        json.member("key", event.keyCode);
    }
    json.member("flags", number(event.flags));
    if (event.isAutorepeat) json.member("repeat", true);
    return json.endObject().endObject().text();
}

std::string decisionLine(EventVerdict verdict, const Event& event) {
    JsonWriter json;
    json.beginObject();
    switch (verdict) {
        case EventVerdict::pass: json.member("decision", "pass"); break;
        case EventVerdict::swallow: json.member("decision", "swallow"); break;
        case EventVerdict::modify:
            json.member("decision", "modify");
            if (event.type == EventType::scrollWheel) {
                json.member("deltaAxis1", event.deltaAxis1)
                    .member("pointDeltaAxis1", event.pointDeltaAxis1);
            } else {
                json.member("key", event.keyCode).member("flags", number(event.flags));
            }
            break;
    }
    return "# " + json.endObject().text();
}

}  // namespace

Recorder::Recorder(std::ostream& out, RecorderSources sources)
    : out_(out),
      sources_(std::move(sources)),
      withheld_(sources_.secrecy, kMostHeld, [this](Entry& entry) { write(entry); }) {
    for (const PreferenceInfo& info : kPreferenceTable) {
        if (info.key == PreferenceKey::clipboardHistory) continue;
        settings_.push_back({info.name, sources_.settings.handle(info.name), {}});
    }
    std::ranges::sort(settings_, {}, &Setting::name);
}

void Recorder::begin() {
    const Circumstances seen = look();
    written_ = seen.time;
    writeCircumstances(seen);
    out_ << "{\"launch\":true}\n";
    out_.flush();
}

EventVerdict Recorder::record(Event& event, const EventHandler& handler) {
    hold(eventStep(event), look());
    const EventVerdict verdict = handler(event);
    hold(decisionLine(verdict, event));
    return verdict;
}

void Recorder::effect(std::string_view name, const std::function<void(JsonWriter&)>& value) {
    JsonWriter json;
    json.beginObject().key(name);
    value(json);
    json.endObject();
    hold("# " + json.text());
}

void Recorder::release() { withheld_.release(); }

void Recorder::hold(std::string line, std::optional<Circumstances> circumstances) {
    const std::size_t size = line.size();
    withheld_.add({std::move(line), std::move(circumstances)}, size);
}

void Recorder::write(const Entry& entry) {
    if (entry.circumstances) writeCircumstances(*entry.circumstances);
    out_ << entry.line << '\n';
    out_.flush();
}

Recorder::Circumstances Recorder::look() {
    return {sources_.runLoop.now(), settingsStep(), sources_.frontmostApplication()};
}

/// Whether any setting is another than it was seen last.
bool Recorder::takeChanges() {
    bool isChanged = false;
    for (Setting& setting : settings_) {
        const PreferenceValue* stored = sources_.settings.value(setting.handle);
        if (isSame(setting.seen, stored)) continue;
        setting.seen = stored == nullptr ? std::nullopt : std::optional(*stored);
        isChanged = true;
    }
    return isChanged;
}

Recorder::Text Recorder::settingsStep() {
    if (!takeChanges() && !lastSettings_->empty()) return lastSettings_;
    JsonWriter json;
    json.beginObject().key("pref").beginObject();
    for (const Setting& setting : settings_) {
        if (!setting.seen || std::holds_alternative<ForeignPreference>(*setting.seen)) continue;
        json.key(setting.name);
        writeValue(json, *setting.seen);
    }
    json.endObject().endObject();
    lastSettings_ = std::make_shared<const std::string>(json.text());
    return lastSettings_;
}

/// Only what differs from what was written last.
void Recorder::writeCircumstances(const Circumstances& seen) {
    writeTime(seen.time);
    if (*seen.settings != *writtenSettings_) out_ << *seen.settings << '\n';
    writtenSettings_ = seen.settings;
    if (seen.frontmost == writtenFrontmost_) return;
    writtenFrontmost_ = seen.frontmost;
    JsonWriter json;
    json.beginObject().key("world").beginObject().key("frontmost");
    seen.frontmost ? json.value(*seen.frontmost) : json.null();
    json.endObject().endObject();
    out_ << json.text() << '\n';
}

void Recorder::writeTime(Instant time) {
    if (time <= written_) return;
    JsonWriter json;
    const double seconds = static_cast<double>((time - written_).count()) / kMicrosecondsPerSecond;
    json.beginObject().member("advance", seconds).endObject();
    out_ << json.text() << '\n';
    written_ = time;
}

bool RecordingTap::create(const EventTapRequest& request, EventHandler handler) {
    return tap_.create(request, [this, decide = std::move(handler)](Event& event) {
        return recorder_.record(event, decide);
    });
}

bool RecordingPoster::postKeys(EventSourceState source, std::span<const PostedKey> keys) {
    for (const PostedKey& key : keys) {
        recorder_.effect("post", [&key](JsonWriter& json) {
            json.beginObject()
                .member("type", memory::eventTypeName(key.type))
                .member("key", key.keyCode);
            if (key.flags) json.member("flags", number(*key.flags));
            json.member("userData", key.userData).member("tap", "hid").endObject();
        });
    }
    return poster_.postKeys(source, keys);
}

bool RecordingPoster::postMediaKeys(std::span<const PostedMediaKey> keys) {
    for (const PostedMediaKey& key : keys) {
        recorder_.effect("post", [&key](JsonWriter& json) {
            json.beginObject()
                .member("type", memory::eventTypeName(EventType::systemDefined))
                .member("subtype", key.subtype)
                .member("data1", key.data1)
                .member("data2", key.data2)
                .member("flags", number(key.flags))
                .member("userData", key.userData)
                .member("tap", "hid")
                .endObject();
        });
    }
    return poster_.postMediaKeys(keys);
}

void RecordingLog::line(std::string_view text) {
    recorder_.effect("log", [text](JsonWriter& json) { json.value(text); });
    log_.line(text);
}

}  // namespace orvel
