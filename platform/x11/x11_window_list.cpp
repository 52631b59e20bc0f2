#include "platform/x11/x11_window_list.hpp"

namespace orvel::x11 {

namespace {

/// The layers of macOS: ordinary windows, and the one of floating palettes.
constexpr int kNormalLayer = 0;
constexpr int kFloatingLayer = 3;

int layerOf(WindowKind kind) { return kind == WindowKind::utility ? kFloatingLayer : kNormalLayer; }

}  // namespace

X11WindowList::X11WindowList(WindowManager& manager, const ClientWindows& clients,
                             const X11Screens& screens)
    : manager_(manager), clients_(clients), screens_(screens) {}

std::vector<WindowInfo> X11WindowList::windows(WindowListScope scope) const {
    const auto deadline = deadlineIn(kServerLimit);
    const auto stacking = manager_.stacking(deadline);
    const auto summaries = manager_.summaries(stacking, deadline);
    std::vector<WindowInfo> found;
    for (std::size_t each = stacking.size(); each-- > 0;) {
        const auto* client = clients_.find(stacking[each]);
        const auto* owner = clients_.owner(stacking[each]);
        const auto& summary = summaries[each];
        if (client == nullptr || owner == nullptr || !summary ||
            client->kind == WindowKind::desktop || client->kind == WindowKind::dock)
            continue;
        if (scope == WindowListScope::onScreen && !summary->isOnScreen) continue;
        found.push_back({stacking[each], owner->handle, layerOf(client->kind), summary->title,
                         screens_.layout().toAx(summary->state.seen())});
    }
    return found;
}

}  // namespace orvel::x11
