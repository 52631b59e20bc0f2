#include "platform/command_line.hpp"

#include "platform/file_system.hpp"
#include "platform/macos/mac_factories.hpp"
#include "platform/macos/mac_running_note.hpp"
#include "platform/macos/mac_user_defaults.hpp"
#include "platform/preference_store.hpp"

#import <Foundation/Foundation.h>

namespace orvel {

namespace {

Result<> apply(PreferenceStore& store, const PreferenceChanges& changes) {
    for (const auto& [key, value] : changes) {
        const PreferenceHandle handle = store.handle(key);
        value ? store.set(handle, *value) : store.remove(handle);
    }
    // The process may end at once, before the system writes by itself.
    if ([(__bridge NSUserDefaults*)macos::userDefaults() synchronize]) return {};
    return Failure{"the system does not keep the settings"};
}

std::vector<RunningEngine> residents() {
    const auto note = macos::readRunningNote();
    return note ? std::vector{*note} : std::vector<RunningEngine>{};
}

}  // namespace

CommandLine makeCommandLine(std::function<void(std::string_view)>) {
    const std::shared_ptr<PreferenceStore> store = macos::makePreferenceStore();
    return {.preferences = store,
            .files = macos::makeFileSystem(),
            .check = [] { return Result<>(); },
            .store = [store](const PreferenceChanges& changes) { return apply(*store, changes); },
            .runningEngines = residents};
}

}  // namespace orvel
