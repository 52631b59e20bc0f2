#pragma once

#include "platform/base/published.hpp"
#include "platform/workspace.hpp"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace orvel::x11 {

/// One running application that can be ended.
struct ForceQuitRow {
    ProcessId pid = 0;
    std::string name;
    /// Where its icon is asked for; empty when the application is not known to the desktop.
    std::string path;
    bool operator==(const ForceQuitRow&) const = default;
};

/// What the Force Quit window shows and does: the running applications, one of them chosen, and
/// the question that comes before one is ended. Main thread.
class ForceQuitModel {
public:
    /// `ownProcess` is left out of the list. `forceTerminate` ends an application without asking
    /// it. The application in front is chosen.
    ForceQuitModel(const Workspace& workspace, ProcessId ownProcess,
                   std::function<void(ProcessId)> forceTerminate);

    /// Reads the running applications again. When the chosen one has ended, its neighbour is chosen
    /// and the question about it is withdrawn.
    void refresh();
    void choose(ProcessId pid);
    /// Chooses the one that many places further down, or at the end of the list.
    void moveChoice(int places);

    /// Asks whether the chosen application shall be ended; nothing happens without one.
    void askToQuit();
    void withdraw() { isAsking_.set(false); }
    /// Ends the application that was asked about.
    void confirm();

    [[nodiscard]] const Published<std::vector<ForceQuitRow>>& rows() const { return rows_; }
    /// The place of the chosen application; -1 when there is none.
    [[nodiscard]] int chosenPlace() const;
    [[nodiscard]] const ForceQuitRow* chosen() const;
    [[nodiscard]] const Published<ProcessId>& chosenPid() const { return chosenPid_; }
    [[nodiscard]] const Published<bool>& isAsking() const { return isAsking_; }

private:
    const Workspace& workspace_;
    ProcessId ownProcess_;
    std::function<void(ProcessId)> forceTerminate_;
    Published<std::vector<ForceQuitRow>> rows_;
    Published<ProcessId> chosenPid_{0};
    Published<bool> isAsking_{false};
};

}  // namespace orvel::x11
