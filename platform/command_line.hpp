#pragma once

#include "platform/base/result.hpp"
#include "platform/preference_list.hpp"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orvel {

class FileSystem;
class PreferenceStore;

/// A resident program of the same user.
struct RunningEngine {
    std::string place;  ///< in the words of the system: "display :0"
    bool isOn = false;
    bool isPaused = false;
};

/// What the command line needs of an operating system; no desktop session is needed for it.
struct CommandLine {
    std::shared_ptr<PreferenceStore> preferences;
    std::shared_ptr<FileSystem> files;
    /// Why the stored settings cannot be read; fine when there are none.
    std::function<Result<>()> check;
    /// Stores changes of several keys at once, and waits until they are kept.
    std::function<Result<>(const PreferenceChanges&)> store;
    std::function<std::vector<RunningEngine>()> runningEngines;
};

/// `report` is told in one line what the user should know about the settings.
CommandLine makeCommandLine(std::function<void(std::string_view)> report);

}  // namespace orvel
