#pragma once

#include "platform/base/result.hpp"
#include "platform/plist/preference_document.hpp"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orvel::x11 {

using Report = std::function<void(std::string_view)>;
using SettingsDocument = std::shared_ptr<const plist::PreferenceDocument>;

/// Where the settings lie at this moment, links followed.
struct SettingsPlace {
    /// A name in a folder that decides which file the settings are.
    struct Name {
        std::string folder;
        std::string name;
        bool operator==(const Name&) const = default;
    };

    std::string file;  ///< no link, may be absent
    bool isLinked = false;
    bool folderExists = false;
    std::vector<Name> decidedBy;  ///< with every link on the way; the file itself comes last
};

/// What was found at the place.
struct SettingsContent {
    enum class State {
        absent,
        good,
        busy,        ///< makes no sense yet, and another program has it open for writing
        damaged,     ///< a file that is no settings
        unreadable,  ///< not even that can be told
    };
    State state = State::absent;
    SettingsDocument document;  ///< null unless good
    std::string problem;
};

/// One property-list file that several programs read and write. Any thread, one call at a time.
class SettingsFile {
public:
    explicit SettingsFile(std::string path) : path_(std::move(path)) {}

    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] Result<SettingsPlace> locate() const;
    /// `known` is returned itself when the file still has its bytes, which saves parsing them.
    [[nodiscard]] SettingsContent read(const SettingsPlace& place,
                                       const std::vector<SettingsDocument>& known) const;

    /// Decides, knowing what is on the disk, what to write.
    using Decide = std::function<PreferenceChanges(const SettingsDocument& onDisk)>;
    /// Merges changes onto what is on the disk, alone among all writers. A damaged file is kept
    /// under another name first, which `report` is told. Returns what is on the disk then. `known`
    /// as in `read`.
    [[nodiscard]] Result<SettingsDocument> update(const Decide& decide,
                                                  const SettingsDocument& known,
                                                  const Report& report) const;

private:
    std::string path_;
};

}  // namespace orvel::x11
