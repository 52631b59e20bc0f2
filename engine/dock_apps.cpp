#include "engine/dock_apps.hpp"

namespace orvel {

namespace {

std::optional<std::string> bundleIdentifier(const Json& entry) {
    const Json* tile = entry.member("tile-data");
    const Json* identifier = tile == nullptr ? nullptr : tile->member("bundle-identifier");
    if (identifier == nullptr || identifier->asString() == nullptr) return std::nullopt;
    return *identifier->asString();
}

}  // namespace

std::vector<std::optional<std::string>> dockApplications(const FileSystem& files) {
    const auto settings =
        files.readPropertyList(files.homeDirectory() + "/Library/Preferences/com.apple.dock.plist");
    if (!settings) return {};
    const Json* entries = settings.value().member("persistent-apps");
    if (entries == nullptr || entries->asArray() == nullptr) return {};
    std::vector<std::optional<std::string>> identifiers;
    for (const Json& entry : *entries->asArray()) identifiers.push_back(bundleIdentifier(entry));
    return identifiers;
}

std::optional<std::string> dockApplication(const FileSystem& files, std::size_t index) {
    const auto identifiers = dockApplications(files);
    return index < identifiers.size() ? identifiers[index] : std::nullopt;
}

}  // namespace orvel
