#pragma once

#include "platform/base/result.hpp"
#include "platform/x11/service_check.hpp"

#include <filesystem>
#include <mutex>
#include <string>
#include <vector>

namespace orvel::x11 {

/// One setting of a panel that was changed to hide it, with what it was before.
struct HiddenPanelSetting {
    std::string panel;
    std::string key;
    std::string before;
    bool operator==(const HiddenPanelSetting&) const = default;
};

/// Makes the desktop's own panel hide itself, and undoes exactly that. What was changed is kept in
/// a file, so that a restore after a crash finds it, and one that finds none changes nothing: a
/// panel that its user hides stays hidden. Any thread.
class DockService {
public:
    /// `memory`: the file that keeps what was changed.
    explicit DockService(std::filesystem::path memory) : memory_(std::move(memory)) {}

    Result<> setHidden(bool isHidden);
    [[nodiscard]] static ServiceCheck check();
    /// Where the session keeps it: `$XDG_STATE_HOME/orvel/hidden-panels`.
    [[nodiscard]] static std::filesystem::path sessionMemory();

private:
    Result<> hide();
    Result<> restore();
    [[nodiscard]] std::vector<HiddenPanelSetting> remembered() const;
    Result<> remember(const std::vector<HiddenPanelSetting>& settings) const;

    std::mutex oneAtATime_;
    std::filesystem::path memory_;
};

}  // namespace orvel::x11
