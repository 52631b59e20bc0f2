#include "platform/x11/force_quit/force_quit_model.hpp"

#include <algorithm>
#include <utility>

namespace orvel::x11 {

ForceQuitModel::ForceQuitModel(const Workspace& workspace, ProcessId ownProcess,
                               std::function<void(ProcessId)> forceTerminate)
    : workspace_(workspace), ownProcess_(ownProcess), forceTerminate_(std::move(forceTerminate)) {
    if (const auto front = workspace_.frontmostApplication()) chosenPid_.set(front->pid);
    refresh();
}

void ForceQuitModel::refresh() {
    const auto place = static_cast<std::size_t>(std::max(chosenPlace(), 0));
    std::vector<ForceQuitRow> rows;
    for (const auto& application : workspace_.runningApplications()) {
        const bool isShown = application.policy == ActivationPolicy::regular &&
                             application.pid != ownProcess_ && !application.isTerminated;
        if (isShown)
            rows.push_back({application.pid, application.name, application.path.value_or("")});
    }
    const bool isThere =
        std::ranges::find(rows, chosenPid_.get(), &ForceQuitRow::pid) != rows.end();
    ProcessId neighbour = 0;
    if (!rows.empty()) neighbour = rows[std::min(place, rows.size() - 1)].pid;
    rows_.set(std::move(rows));
    if (isThere) return;
    isAsking_.set(false);
    chosenPid_.set(neighbour);
}

void ForceQuitModel::choose(ProcessId pid) {
    const auto& rows = rows_.get();
    if (std::ranges::find(rows, pid, &ForceQuitRow::pid) != rows.end()) chosenPid_.set(pid);
}

void ForceQuitModel::moveChoice(int places) {
    const auto& rows = rows_.get();
    if (rows.empty()) return;
    const int last = static_cast<int>(rows.size()) - 1;
    const int place = std::clamp(chosenPlace() + places, 0, last);
    chosenPid_.set(rows[static_cast<std::size_t>(place)].pid);
}

void ForceQuitModel::askToQuit() {
    if (chosen() != nullptr) isAsking_.set(true);
}

void ForceQuitModel::confirm() {
    if (!isAsking_.get()) return;
    isAsking_.set(false);
    if (const auto* row = chosen()) forceTerminate_(row->pid);
}

int ForceQuitModel::chosenPlace() const {
    const auto& rows = rows_.get();
    const auto found = std::ranges::find(rows, chosenPid_.get(), &ForceQuitRow::pid);
    return found == rows.end() ? -1 : static_cast<int>(found - rows.begin());
}

const ForceQuitRow* ForceQuitModel::chosen() const {
    const int place = chosenPlace();
    return place < 0 ? nullptr : &rows_.get()[static_cast<std::size_t>(place)];
}

}  // namespace orvel::x11
