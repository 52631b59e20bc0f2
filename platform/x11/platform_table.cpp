#include "platform/x11/platform_table.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <sstream>

namespace orvel::x11 {

namespace {

constexpr std::array<std::string_view, 3> kSections = {"keys", "applications", "shortcuts"};

std::string_view trimmed(std::string_view text) {
    const auto isBlank = [](char letter) {
        return letter == ' ' || letter == '\t' || letter == '\r';
    };
    while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
    return text;
}

/// Reads line by line and keeps what it has read in the table.
class TableParser {
public:
    explicit TableParser(std::string_view path) { table_.path = path; }

    void take(std::string_view line) {
        ++line_;
        line = trimmed(line);
        if (line.empty() || line.front() == '#') return;
        if (line.front() == '[')
            takeSection(line);
        else
            takeEntry(line);
    }

    PlatformTable finish() { return std::move(table_); }

private:
    void takeSection(std::string_view line) {
        section_.reset();
        isInsideUnknown_ = true;
        if (line.back() != ']') return fail("a section ends with ]");
        const auto name = trimmed(line.substr(1, line.size() - 2));
        if (std::find(kSections.begin(), kSections.end(), name) == kSections.end())
            return fail("no section is called '" + std::string(name) +
                        "' (keys, applications, shortcuts)");
        section_ = name;
        isInsideUnknown_ = false;
    }

    void takeEntry(std::string_view line) {
        if (isInsideUnknown_) return;  // The section's own error says it.
        if (!section_) return fail("an entry before the first section");
        const auto equals = line.find('=');
        if (equals == std::string_view::npos) return fail("expected 'key = value'");
        const auto key = trimmed(line.substr(0, equals));
        const auto value = trimmed(line.substr(equals + 1));
        if (key.empty()) return fail("no key before =");
        if (value.empty()) return fail("no value for '" + std::string(key) + "'");
        for (const auto& entry : table_.entries) {
            if (entry.section == *section_ && entry.key == key)
                return fail("'" + std::string(key) + "' is already set in line " +
                            std::to_string(entry.line));
        }
        table_.entries.push_back({*section_, std::string(key), std::string(value), line_});
    }

    void fail(const std::string& what) {
        table_.errors.push_back(table_.errorAt({{}, {}, {}, line_}, what));
    }

    PlatformTable table_;
    std::optional<std::string> section_;
    bool isInsideUnknown_ = false;
    int line_ = 0;
};

std::filesystem::path configFolder() {
    const char* configured = std::getenv("XDG_CONFIG_HOME");
    if (configured != nullptr && *configured == '/') return configured;
    const char* home = std::getenv("HOME");
    return std::filesystem::path(home == nullptr ? "/" : home) / ".config";
}

}  // namespace

std::vector<TableEntry> PlatformTable::section(std::string_view name) const {
    std::vector<TableEntry> found;
    std::copy_if(entries.begin(), entries.end(), std::back_inserter(found),
                 [name](const TableEntry& entry) { return entry.section == name; });
    return found;
}

std::string PlatformTable::errorAt(const TableEntry& entry, std::string_view what) const {
    return path + ':' + std::to_string(entry.line) + ": " + std::string(what);
}

PlatformTable parsePlatformTable(std::string_view path, std::string_view text) {
    TableParser parser(path);
    while (!text.empty()) {
        const auto end = text.find('\n');
        parser.take(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return parser.finish();
}

PlatformTable loadPlatformTable() {
    const auto path = configFolder() / "orvel" / "platform.conf";
    std::error_code error;
    if (!std::filesystem::exists(path, error)) return {path.string(), {}, {}};
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    // Copying nothing marks the target as failed, so only the source's state tells.
    if (!std::filesystem::is_empty(path, error)) text << file.rdbuf();
    if (!file || !text || error)
        return {path.string(), {}, {path.string() + ": cannot be read: " + std::strerror(errno)}};
    return parsePlatformTable(path.string(), text.str());
}

}  // namespace orvel::x11
