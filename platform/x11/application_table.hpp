#pragma once

#include "platform/x11/application_index.hpp"
#include "platform/x11/platform_table.hpp"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace orvel::x11 {

/// How an application wants to be spoken to.
enum class ApplicationKind { fileManager, terminal, browser, editor, other };

std::string_view kindName(ApplicationKind kind);
std::optional<ApplicationKind> kindNamed(std::string_view name);

/// One application of macOS that the system names, and what takes its place here.
struct Counterpart {
    std::string_view identifier;
    std::string_view name;
    /// Desktop-file ids without ending, the best first.
    std::span<const std::string_view> candidates;
};

/// Which application stands for which one of macOS. The user's table wins over the built-in one.
class ApplicationTable {
public:
    ApplicationTable() = default;
    /// Problems of the user's table are appended to `errors`.
    ApplicationTable(const PlatformTable& user, std::vector<std::string>& errors);

    [[nodiscard]] static std::span<const Counterpart> counterparts();

    /// The installed application for an identifier of macOS or of a desktop file. `preferred` is
    /// taken before the built-in candidates when it is one that can stand for it.
    [[nodiscard]] const DesktopEntry* resolve(const ApplicationIndex& index,
                                              std::string_view identifier,
                                              std::string_view preferred = {}) const;
    /// The installed application that people call so: a name of macOS or of the desktop.
    [[nodiscard]] const DesktopEntry* resolveName(const ApplicationIndex& index,
                                                  std::string_view name,
                                                  std::string_view preferred = {}) const;
    /// The identifier of macOS whose part this application plays; absent for any other.
    [[nodiscard]] std::optional<std::string> macIdentifier(const DesktopEntry& entry) const;

private:
    /// Identifier or name of macOS to the id the user chose.
    std::unordered_map<std::string, std::string> chosen_;
};

ApplicationKind kindOf(const DesktopEntry& entry);
/// For windows without a desktop file: by the program's name.
ApplicationKind kindOf(const WindowIdentity& window);

}  // namespace orvel::x11
