#include "app/cli/prefs_command.hpp"

#include "app/cli/preference_text.hpp"
#include "platform/file_system.hpp"

#include <algorithm>
#include <istream>
#include <iterator>
#include <ostream>
#include <span>
#include <utility>

namespace orvel {

namespace {

constexpr int kFailed = 1;
constexpr int kWrongUse = 2;

/// A setting that a running program does not look at with every event.
struct LateEffect {
    PreferenceKey key;
    std::string_view note;
};
constexpr LateEffect kLateEffects[] = {
    {PreferenceKey::cardMouseSide, "takes effect when the settings panel opens ('orvel panel')"},
    {PreferenceKey::cardAltMenu, "takes effect when the settings panel opens ('orvel panel')"},
    {PreferenceKey::cardTaskbar, "takes effect when orvel starts again"},
    {PreferenceKey::launchAtLogin,
     "is what the menu shows; starting with the session is changed in the menu alone"},
};

std::string unknown(std::string_view name) {
    return "unknown key '" + std::string(name) + "'; the nearest is '" +
           std::string(nearestPreference(name)) + "'";
}

/// What a value of another type is, for somebody who wonders why it reads as it does.
std::string storedAs(const PreferenceValue& value) {
    constexpr std::string_view names[] = {"boolean", "integer", "real",        "string",
                                          "list",    "data",    "another type"};
    return "stored as " + std::string(names[value.index()]);
}

}  // namespace

PrefsCommand::PrefsCommand(CommandLine& line, std::ostream& out, std::ostream& err)
    : line_(line), preferences_(*line.preferences), out_(out), err_(err) {}

int PrefsCommand::list() {
    if (!canRead()) return kFailed;
    std::size_t width = 0;
    for (const PreferenceInfo& info : kPreferenceTable) width = std::max(width, info.name.size());
    for (const PreferenceInfo& info : kPreferenceTable) {
        Shown shown = show(info);
        const auto* data =
            stored(info) == nullptr ? nullptr : std::get_if<PreferenceData>(stored(info));
        if (data != nullptr) shown.text = "(" + std::to_string(data->size()) + " bytes)";
        out_ << info.name << std::string(width - info.name.size() + 2, ' ') << shown.text
             << (shown.text.empty() ? "" : " ") << shown.remark << '\n';
    }
    return 0;
}

int PrefsCommand::get(std::string_view name) {
    const PreferenceInfo* info = find(name);
    if (info == nullptr) return kWrongUse;
    if (!canRead()) return kFailed;
    const Shown shown = show(*info);
    const bool needsBlank = !shown.text.empty() && !shown.remark.empty();
    out_ << shown.text << (needsBlank ? " " : "") << shown.remark << '\n';
    return 0;
}

int PrefsCommand::set(std::string_view name, const std::vector<std::string>& words) {
    const PreferenceInfo* info = find(name);
    if (info == nullptr) return kWrongUse;
    Result<PreferenceValue> value = parsePreference(*info, words);
    if (!value) return fail(kWrongUse, std::string(name) + ": " + value.error());
    return store({{std::string(name), std::move(value).value()}});
}

int PrefsCommand::unset(std::string_view name) {
    if (find(name) == nullptr) return kWrongUse;
    return store({{std::string(name), std::nullopt}});
}

int PrefsCommand::exportTo(const std::string& path) {
    if (!canRead()) return kFailed;
    PreferenceEntries entries;
    for (const PreferenceInfo& info : kPreferenceTable) {
        if (const PreferenceValue* value = stored(info)) entries.emplace_back(info.name, *value);
    }
    const std::string text = writePreferenceList(entries);
    if (path == "-") {
        out_ << text;
        return 0;
    }
    const auto written = line_.files->writeAtomically(path, std::as_bytes(std::span(text)));
    if (!written) return fail(kFailed, written.error());
    if (stored(preferenceInfo(PreferenceKey::clipboardHistory)) != nullptr) {
        err_ << "orvel: " << path << " holds the clipboard history, too\n";
    }
    return 0;
}

int PrefsCommand::importFrom(const std::string& path, std::istream& in, bool skipsUnknown) {
    std::string bytes;
    if (path == "-") {
        bytes.assign(std::istreambuf_iterator<char>(in), {});
    } else {
        const Result<std::vector<std::byte>> read = line_.files->read(path);
        if (!read) return fail(kFailed, read.error());
        const auto* begin = reinterpret_cast<const char*>(read.value().data());
        bytes.assign(begin, begin + read.value().size());
    }
    PreferenceChanges changes;
    const int status = readChanges(bytes, path, skipsUnknown, changes);
    return status == 0 ? store(changes) : status;
}

int PrefsCommand::readChanges(const std::string& bytes, const std::string& path, bool skipsUnknown,
                              PreferenceChanges& changes) {
    Result<PreferenceEntries> entries = readPreferenceList(bytes);
    if (!entries) return fail(kWrongUse, path + ": " + entries.error());
    int status = 0;
    const std::string prefix = path + ": ";
    for (const auto& [name, value] : entries.value()) {
        const PreferenceInfo* info = findPreference(name);
        if (info == nullptr) {
            if (!skipsUnknown) status = fail(kWrongUse, prefix + unknown(name));
        } else if (const Result<> checked = checkPreference(*info, value); !checked) {
            status = fail(kWrongUse, (prefix + name).append(": ").append(checked.error()));
        } else {
            changes.emplace(name, value);
        }
    }
    return status;
}

int PrefsCommand::fail(int status, const std::string& message) {
    err_ << "orvel: " << message << '\n';
    return status;
}

const PreferenceInfo* PrefsCommand::find(std::string_view name) {
    const PreferenceInfo* info = findPreference(name);
    if (info == nullptr) fail(kWrongUse, unknown(name));
    return info;
}

bool PrefsCommand::canRead() {
    const Result<> checked = line_.check();
    if (!checked) fail(kFailed, checked.error());
    return checked.ok();
}

const PreferenceValue* PrefsCommand::stored(const PreferenceInfo& info) {
    return line_.preferences->value(line_.preferences->handle(info.name));
}

PrefsCommand::Shown PrefsCommand::show(const PreferenceInfo& info) {
    const PreferenceValue* value = stored(info);
    std::string text = shownText(info);
    if (value == nullptr) return {std::move(text), "(absent)"};
    if (!hasPreferenceType(info.type, *value))
        return {std::move(text), "(" + storedAs(*value) + ")"};
    const Result<> checked = checkPreference(info, *value);
    return {std::move(text), checked ? "" : "(not a known value)"};
}

/// The setting as its readers see it, a value of another type included.
std::string PrefsCommand::shownText(const PreferenceInfo& info) {
    switch (info.type) {
        case PreferenceType::boolean: return preferenceText(preferences_.shownFlag(info.key));
        case PreferenceType::string: return preferences_.shownText(info.key);
        case PreferenceType::stringList: {
            const auto list = preferences_.stringArrayForKey(info.key);
            return list ? preferenceText(*list) : "";
        }
        case PreferenceType::data: {
            const auto data = preferences_.dataForKey(info.key);
            return data ? preferenceText(*data) : "";
        }
        case PreferenceType::integer: break;
    }
    const PreferenceValue* value = stored(info);
    return value == nullptr ? "" : preferenceText(*value);
}

int PrefsCommand::store(const PreferenceChanges& changes) {
    const Result<> stored = line_.store(changes);
    if (!stored) return fail(kFailed, stored.error() + "; nothing is changed");
    explainEffect(changes);
    return 0;
}

/// A running program takes a change over by itself, with the exceptions named here. Whether it
/// is on is never changed from outside.
void PrefsCommand::explainEffect(const PreferenceChanges& changes) {
    const std::vector<RunningEngine> engines = line_.runningEngines();
    for (const LateEffect& late : kLateEffects) {
        const std::string name(preferenceInfo(late.key).name);
        if (!engines.empty() && changes.contains(name))
            err_ << "orvel: " << name << ' ' << late.note << '\n';
    }
    for (const RunningEngine& engine : engines) {
        if (!engine.isOn) {
            err_ << "orvel: the engine on " << engine.place
                 << " is off and stays off; 'orvel panel' opens the settings, which turns it on "
                    "while"
                    " any switch is on\n";
        } else if (engine.isPaused) {
            err_ << "orvel: the engine on " << engine.place
                 << " is paused; Backspace, Escape and Return held together resume it\n";
        }
    }
}

}  // namespace orvel
