#include "app/record/recorder.hpp"

#include "app/preference_keys.hpp"
#include "platform/base/base64.hpp"
#include "platform/memory/event_names.hpp"

#include <type_traits>
#include <utility>

namespace orvel {

namespace {

constexpr double kMicrosecondsPerSecond = 1e6;

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

bool isWorthRecording(std::string_view key, const PreferenceValue& value) {
    return findPreference(key) != nullptr && !std::holds_alternative<ForeignPreference>(value) &&
           key != preferenceInfo(PreferenceKey::clipboardHistory).name;
}

bool isMouse(EventType type) {
    return type == EventType::otherMouseDown || type == EventType::otherMouseUp;
}

std::int64_t number(EventFlags flags) { return static_cast<std::int64_t>(flags); }

}  // namespace

Recorder::Recorder(std::ostream& out, RecorderSources sources)
    : out_(out), sources_(std::move(sources)) {}

void Recorder::begin() {
    writeSettings();
    writeWorld();
    out_ << "{\"launch\":true}\n";
    out_.flush();
    written_ = sources_.runLoop.now();
}

EventVerdict Recorder::record(Event& event, const EventHandler& handler) {
    isSilent_ = sources_.isSecretTyped();
    if (isSilent_) return handler(event);
    writeTime();
    writeSettings();
    writeWorld();
    writeEvent(event);
    const Event before = event;
    const EventVerdict verdict = handler(event);
    writeDecision(verdict, event == before ? before : event);
    out_.flush();
    return verdict;
}

void Recorder::effect(std::string_view name, const std::function<void(JsonWriter&)>& value) {
    if (isSilent_) return;
    JsonWriter json;
    json.beginObject().key(name);
    value(json);
    json.endObject();
    out_ << "# " << json.text() << '\n';
}

void Recorder::writeTime() {
    const Instant now = sources_.runLoop.now();
    if (now <= written_) return;
    JsonWriter json;
    const double seconds = static_cast<double>((now - written_).count()) / kMicrosecondsPerSecond;
    json.beginObject().member("advance", seconds).endObject();
    step(json);
    written_ = now;
}

void Recorder::writeSettings() {
    JsonWriter json;
    json.beginObject().key("pref").beginObject();
    for (const auto& [key, value] : sources_.settings()) {
        if (!isWorthRecording(key, value)) continue;
        json.key(key);
        writeValue(json, value);
    }
    json.endObject().endObject();
    if (json.text() == settings_) return;
    settings_ = json.text();
    step(json);
}

void Recorder::writeWorld() {
    auto frontmost = sources_.frontmostApplication();
    if (frontmost == frontmost_) return;
    frontmost_ = std::move(frontmost);
    JsonWriter json;
    json.beginObject().key("world").beginObject().key("frontmost");
    frontmost_ ? json.value(*frontmost_) : json.null();
    json.endObject().endObject();
    step(json);
}

void Recorder::writeEvent(const Event& event) {
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
    json.endObject().endObject();
    step(json);
}

void Recorder::writeDecision(EventVerdict verdict, const Event& event) {
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
    json.endObject();
    out_ << "# " << json.text() << '\n';
}

void Recorder::step(const JsonWriter& json) { out_ << json.text() << '\n'; }

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
