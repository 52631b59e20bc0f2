#include "platform/memory/memory_file_system.hpp"

namespace orvel::memory {

namespace {

const std::string kDockPlist =
    std::string(kHomeDirectory) + "/Library/Preferences/com.apple.dock.plist";

/// The folder that holds `path`; empty for the root's own entries.
std::string_view parentOf(std::string_view path) {
    return path.substr(0, std::min(path.rfind('/'), path.size()));
}

Failure missing(std::string_view path) { return {std::string(path) + ": no such file or folder"}; }

Failure refused(std::string_view path) { return {std::string(path) + ": not writable"}; }

}  // namespace

Result<std::vector<std::string>> MemoryFileSystem::list(std::string_view path) const {
    if (path == kApplicationsDirectory) {
        if (!world_.applicationsFolder) return Failure{std::string(path) + ": not readable"};
        return *world_.applicationsFolder;
    }
    if (!world_.folders.contains(path)) return missing(path);
    std::vector<std::string> names;
    const auto addName = [&](const std::string& entry) {
        if (parentOf(entry) == path) names.push_back(entry.substr(path.size() + 1));
    };
    for (const std::string& folder : world_.folders) addName(folder);
    for (const auto& [file, bytes] : world_.files) addName(file);
    return names;
}

bool MemoryFileSystem::exists(std::string_view path) const {
    if (path == kDockPlist) return world_.dockPlist.has_value();
    return world_.files.contains(path) || world_.folders.contains(path);
}

Result<std::vector<std::byte>> MemoryFileSystem::read(std::string_view path) const {
    const auto found = world_.files.find(path);
    if (found == world_.files.end()) return missing(path);
    return found->second;
}

Result<Json> MemoryFileSystem::readPropertyList(std::string_view path) const {
    if (path != kDockPlist || !world_.dockPlist) return missing(path);
    return *world_.dockPlist;
}

Result<> MemoryFileSystem::writeAtomically(std::string_view path,
                                           std::span<const std::byte> bytes) {
    effects_.effect("file")
        ->beginObject()
        .member("write", path)
        .member("bytes", std::uint64_t{bytes.size()})
        .endObject();
    if (world_.isUnwritable(path)) return refused(path);
    if (!world_.folders.contains(parentOf(path))) return missing(parentOf(path));
    world_.files.insert_or_assign(std::string(path), std::vector(bytes.begin(), bytes.end()));
    return {};
}

Result<> MemoryFileSystem::remove(std::string_view path) {
    effects_.effect("file")->beginObject().member("remove", path).endObject();
    if (!exists(path)) return missing(path);
    world_.removeFromOutside(path);
    return {};
}

Result<> MemoryFileSystem::createFolder(std::string_view path) {
    effects_.effect("file")->beginObject().member("createFolder", path).endObject();
    if (world_.isUnwritable(path)) return refused(path);
    for (auto folder = path; !folder.empty(); folder = parentOf(folder)) {
        world_.folders.emplace(folder);
    }
    return {};
}

}  // namespace orvel::memory
