#pragma once

#include "app/record/recorder.hpp"
#include "platform/macos/mac_desktop.hpp"

#include <fstream>
#include <string>

namespace orvel::session {

/// Writes this login session as replay steps. What is typed for one program alone, as a password
/// is, is left out.
class MacRecording {
public:
    /// The file exists already. The desktop outlives the recording.
    MacRecording(Desktop& ports, const std::string& path);

    [[nodiscard]] Recorder& recorder() { return recorder_; }
    [[nodiscard]] macos::RecordedPorts ports() { return {tap_, poster_, log_}; }

private:
    std::ofstream file_;
    SecrecyAtOnce secrecy_;
    Recorder recorder_;
    RecordingTap tap_;
    RecordingPoster poster_;
    RecordingLog log_;
};

}  // namespace orvel::session
