#pragma once

#include "platform/plist/preference_document.hpp"
#include "platform/preference_store.hpp"
#include "platform/x11/settings_file.hpp"
#include "platform/x11/settings_watch.hpp"
#include "platform/x11/settings_writer.hpp"

#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvel::x11 {

/// `$XDG_CONFIG_HOME/orvel/preferences.plist`.
std::string preferencesPath();

/// The settings in one property-list file. Reads come from memory; what another program writes
/// shows after `refresh`, which a run loop calls before anything else of a wake-up when
/// `changesFd` is readable. Writes reach the disk at once, but on a thread of their own.
class X11PreferenceStore final : public PreferenceStore {
public:
    using Failures = SettingsWriter::Failures;

    /// `report` is told in one line, on any thread, what the user should know.
    X11PreferenceStore(std::string path, Report report, Failures failures = Failures::keepTrying);

    [[nodiscard]] PreferenceHandle handle(std::string_view key) override;
    [[nodiscard]] const PreferenceValue* value(PreferenceHandle handle) const override;
    void set(PreferenceHandle handle, PreferenceValue value) override;
    void remove(PreferenceHandle handle) override;

    /// Readable when the file may have changed. The first call begins to watch.
    int changesFd();
    /// Takes over what other programs wrote; cheap when they wrote nothing.
    void refresh();
    /// Changes of several keys that nobody sees in part.
    void apply(const PreferenceChanges& changes);
    /// Why what is stored could not be read; empty when it could, or when nothing is stored.
    [[nodiscard]] const std::string& problem() const { return problem_; }
    /// Waits until all changes are on the disk, or says why they are not.
    Result<> flush() { return writer_.flush(); }

    [[nodiscard]] const std::string& path() const { return file_.path(); }

private:
    struct Change {
        std::optional<PreferenceValue> value;
        SettingsWriter::Sequence sequence = 0;
    };

    void load();
    void take(const SettingsPlace& place, const SettingsContent& content);
    void dropConfirmed();
    void rebuildSlots();
    [[nodiscard]] const PreferenceValue* lookUp(const std::string& key) const;
    void tellUnlessAsked(const std::string& problem);
    void tell(const std::string& problem);

    SettingsFile file_;
    Failures failures_;
    Report report_;
    SettingsWriter writer_;
    std::unique_ptr<SettingsWatch> watch_;
    SettingsDocument document_;  ///< as read last; null when there is none
    SettingsWriter::Sequence confirmed_ = 0;
    std::map<std::string, Change, std::less<>> changes_;  ///< not on the disk yet
    std::map<std::string, PreferenceHandle, std::less<>> handles_;
    std::vector<std::string> keys_;              ///< by handle
    std::vector<const PreferenceValue*> slots_;  ///< by handle
    std::string told_;
    std::string problem_;
};

}  // namespace orvel::x11
