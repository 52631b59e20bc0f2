#include "platform/x11/application_index.hpp"

#include <algorithm>
#include <set>
#include <utility>

namespace orvel::x11 {

namespace {

constexpr std::string_view kEnding = ".desktop";
constexpr std::string_view kFolder = "/Applications/";
constexpr std::string_view kBundleEnding = ".app";

std::string_view withoutEnding(std::string_view text, std::string_view ending) {
    if (text.ends_with(ending)) text.remove_suffix(ending.size());
    return text;
}

/// "org.xfce.mousepad" is Mousepad's; "debian-xterm" is XTerm's.
std::string_view lastPart(std::string_view id) {
    const auto dot = id.find_last_of('.');
    return dot == std::string_view::npos ? id : id.substr(dot + 1);
}

}  // namespace

bool DesktopEntry::hasCategory(std::string_view category) const {
    return std::find(categories.begin(), categories.end(), category) != categories.end();
}

ApplicationIndex::ApplicationIndex(std::vector<DesktopEntry> entries)
    : entries_(std::move(entries)) {
    for (std::size_t each = 0; each < entries_.size(); ++each) {
        const auto& entry = entries_[each];
        const std::string bareId(withoutEnding(entry.id, kEnding));
        add(byId_, lowered(bareId), each);
        add(byPath_, entry.path, each);
        add(byName_, lowered(entry.name), each);
        add(byWmClass_, lowered(entry.startupWmClass), each);
        add(byLastPart_, lowered(lastPart(bareId)), each);
        add(byExecutable_, lowered(entry.executable), each);
    }
}

void ApplicationIndex::add(Lookup& lookup, std::string key, std::size_t entry) {
    if (key.empty()) return;
    const auto [place, isNew] = lookup.try_emplace(std::move(key), entry);
    if (!isNew && !entries_[place->second].isShown && entries_[entry].isShown)
        place->second = entry;
}

const DesktopEntry* ApplicationIndex::find(const Lookup& lookup, std::string_view key) const {
    if (key.empty()) return nullptr;
    const auto found = lookup.find(std::string(key));
    return found == lookup.end() ? nullptr : &entries_[found->second];
}

const DesktopEntry* ApplicationIndex::byId(std::string_view id) const {
    return find(byId_, lowered(withoutEnding(id, kEnding)));
}

const DesktopEntry* ApplicationIndex::byPath(std::string_view path) const {
    if (const auto* entry = find(byPath_, path)) return entry;
    if (!path.starts_with(kFolder) || !path.ends_with(kBundleEnding)) return nullptr;
    return find(byName_, lowered(withoutEnding(path.substr(kFolder.size()), kBundleEnding)));
}

const DesktopEntry* ApplicationIndex::byName(std::string_view name) const {
    const auto key = lowered(withoutEnding(name, kBundleEnding));
    if (const auto* entry = find(byName_, key)) return entry;
    if (const auto* entry = find(byExecutable_, key)) return entry;
    return find(byLastPart_, key);
}

const DesktopEntry* ApplicationIndex::owning(const WindowIdentity& window) const {
    if (const auto* entry = byId(window.desktopFile)) return entry;
    const auto className = lowered(window.className);
    const auto instance = lowered(window.instance);
    // The class names the application; the instance may be the user's own choice of words.
    for (const auto* lookup : {&byWmClass_, &byId_, &byLastPart_}) {
        if (const auto* entry = find(*lookup, className)) return entry;
        if (const auto* entry = find(*lookup, instance)) return entry;
    }
    for (const auto& key : {lowered(window.executable), instance, className}) {
        if (const auto* entry = find(byExecutable_, key)) return entry;
    }
    return find(byName_, className);
}

std::vector<std::string> ApplicationIndex::folderNames() const {
    std::set<std::string> names;
    for (const auto& entry : entries_) {
        // A name with a slash cannot be a component of a path.
        if (entry.isShown && entry.name.find('/') == std::string::npos)
            names.insert(entry.name + std::string(kBundleEnding));
    }
    return {names.begin(), names.end()};
}

std::string lowered(std::string_view text) {
    std::string result(text);
    for (char& letter : result) {
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    }
    return result;
}

}  // namespace orvel::x11
