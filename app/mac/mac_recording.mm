#include "app/mac/mac_recording.hpp"

#include "platform/macos/mac_session.hpp"
#include "platform/workspace.hpp"

namespace orvel::session {

namespace {

RecorderSources sourcesOf(Desktop& ports, const TypedSecrecy& secrecy) {
    return {.runLoop = ports.runLoop,
            .secrecy = secrecy,
            .frontmostApplication =
                [&workspace = ports.workspace] {
                    const auto application = workspace.frontmostApplication();
                    return application ? application->bundleId : std::nullopt;
                },
            .settings = ports.preferenceStore};
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
