#include "app/mac/mac_recording.hpp"

#include "app/preference_keys.hpp"
#include "platform/macos/mac_session.hpp"
#include "platform/workspace.hpp"

namespace orvel::session {

namespace {

std::map<std::string, PreferenceValue, std::less<>> storedSettings(PreferenceStore& store) {
    std::map<std::string, PreferenceValue, std::less<>> settings;
    for (const PreferenceInfo& info : kPreferenceTable) {
        const PreferenceValue* value = store.value(store.handle(info.name));
        if (value != nullptr) settings.emplace(info.name, *value);
    }
    return settings;
}

RecorderSources sourcesOf(Desktop& ports, const TypedSecrecy& secrecy) {
    return {.runLoop = ports.runLoop,
            .secrecy = secrecy,
            .frontmostApplication =
                [&workspace = ports.workspace] {
                    const auto application = workspace.frontmostApplication();
                    return application ? application->bundleId : std::nullopt;
                },
            .settings = [&store = ports.preferenceStore] { return storedSettings(store); }};
}

}  // namespace

MacRecording::MacRecording(Desktop& ports, const std::string& path)
    : file_(path, std::ios::app),
      secrecy_(macos::isTypingSecret),
      recorder_(file_, sourcesOf(ports, secrecy_)),
      tap_(ports.eventTap, recorder_),
      poster_(ports.eventPoster, recorder_),
      log_(ports.log, recorder_) {}

}  // namespace orvel::session
