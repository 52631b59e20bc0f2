#pragma once

#include "app/preferences.hpp"
#include "platform/command_line.hpp"

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace orvel {

/// `orvel prefs`: the stored settings, typed by the table of settings. Each command returns the
/// exit status to end with: 0, 1 when the system failed, 2 when what was asked for is wrong.
/// Failures are one line on `err` that names the file or the key.
class PrefsCommand {
public:
    PrefsCommand(CommandLine& line, std::ostream& out, std::ostream& err);

    /// Every setting of the table on its line, absent ones with the default that views show.
    int list();
    int get(std::string_view name);
    int set(std::string_view name, const std::vector<std::string>& words);
    int unset(std::string_view name);
    /// Stored settings as a property list; "-" is standard output.
    int exportTo(const std::string& path);
    /// All settings of a property list, or none of them when one is wrong; "-" is standard input.
    int importFrom(const std::string& path, std::istream& in, bool skipsUnknown);

private:
    /// How a value reads, and what to say behind it.
    struct Shown {
        std::string text;
        std::string remark;
    };

    int fail(int status, const std::string& message);
    const PreferenceInfo* find(std::string_view name);
    [[nodiscard]] bool canRead();
    [[nodiscard]] const PreferenceValue* stored(const PreferenceInfo& info);
    [[nodiscard]] Shown show(const PreferenceInfo& info);
    [[nodiscard]] std::string shownText(const PreferenceInfo& info);
    int store(const PreferenceChanges& changes);
    int readChanges(const std::string& bytes, const std::string& path, bool skipsUnknown,
                    PreferenceChanges& changes);
    void explainEffect(const PreferenceChanges& changes);

    CommandLine& line_;
    Preferences preferences_;
    std::ostream& out_;
    std::ostream& err_;
};

}  // namespace orvel
