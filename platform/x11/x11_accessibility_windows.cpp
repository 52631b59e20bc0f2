#include "platform/x11/x11_accessibility_windows.hpp"

#include <algorithm>
#include <cmath>
#include <memory>

namespace orvel::x11 {

namespace {

/// How long the server may take to answer a call without a budget.
constexpr Milliseconds kCallLimit{300};

AxWindow named(std::uint32_t window) { return {std::make_shared<const std::uint32_t>(window)}; }

bool isApplicationWindow(const ClientWindow& window) {
    return window.kind != WindowKind::desktop && window.kind != WindowKind::dock;
}

std::string roleOf(WindowKind kind) {
    switch (kind) {
        case WindowKind::normal:
        case WindowKind::utility: return "AXWindow";
        case WindowKind::dialog: return "AXDialog";
        default: return "AXUnknown";
    }
}

int rounded(double value) { return static_cast<int>(std::lround(value)); }

}  // namespace

X11AccessibilityWindows::X11AccessibilityWindows(WindowManager& manager,
                                                 const ClientWindows& clients,
                                                 const X11Screens& screens)
    : manager_(manager), clients_(clients), screens_(screens) {}

void X11AccessibilityWindows::setBudget(std::optional<std::chrono::milliseconds> budget) {
    budgetEnd_.reset();
    if (budget) budgetEnd_ = deadlineIn(*budget);
}

Deadline X11AccessibilityWindows::callDeadline() const {
    return budgetEnd_ ? *budgetEnd_ : deadlineIn(kCallLimit);
}

std::uint32_t X11AccessibilityWindows::windowId(const AxWindow& window) {
    const auto* id = static_cast<const std::uint32_t*>(window.element.get());
    return id == nullptr ? 0 : *id;
}

std::optional<AxWindow> X11AccessibilityWindows::focusedWindow(ProcessId pid) const {
    const auto* group = clients_.group(pid);
    if (group == nullptr) return std::nullopt;
    const auto deadline = callDeadline();
    const auto isShown = [&](std::uint32_t window) {
        const auto* client = clients_.find(window);
        if (client == nullptr || !isApplicationWindow(*client)) return false;
        const auto state = manager_.state(window, deadline);
        return state && !state->isMinimized;
    };
    if (group->owns(clients_.activeWindow()) && isShown(clients_.activeWindow()))
        return named(clients_.activeWindow());
    const auto stacking = manager_.stacking(deadline);
    const auto top = std::find_if(stacking.rbegin(), stacking.rend(), [&](std::uint32_t window) {
        return group->owns(window) && isShown(window);
    });
    if (top == stacking.rend()) return std::nullopt;
    return named(*top);
}

std::optional<std::vector<AxWindow>> X11AccessibilityWindows::windows(ProcessId pid) const {
    const auto* group = clients_.group(pid);
    if (group == nullptr) return std::nullopt;
    const auto stacking = manager_.stacking(callDeadline());
    if (stacking.empty()) return std::nullopt;
    std::vector<AxWindow> found;
    for (auto window = stacking.rbegin(); window != stacking.rend(); ++window) {
        const auto* client = clients_.find(*window);
        if (client != nullptr && group->owns(*window) && isApplicationWindow(*client))
            found.push_back(named(*window));
    }
    return found;
}

AxWindowAttributes X11AccessibilityWindows::attributes(const AxWindow& window) const {
    const auto id = windowId(window);
    const auto deadline = callDeadline();
    const auto state = manager_.state(id, deadline);
    if (!state) return {};
    const auto* client = clients_.find(id);
    const auto seen = state->seen();
    return {roleOf(client == nullptr ? WindowKind::normal : client->kind),
            manager_.title(id, deadline), screens_.layout().toAx(seen.x, seen.y),
            Size{static_cast<double>(seen.width), static_cast<double>(seen.height)},
            state->isMinimized};
}

bool X11AccessibilityWindows::setPosition(const AxWindow& window, AxPoint position) {
    const auto wanted = screens_.layout().fromAx({position.x, position.y, 0, 0});
    return manager_.move(windowId(window), {wanted.x, wanted.y}, callDeadline());
}

bool X11AccessibilityWindows::setSize(const AxWindow& window, Size size) {
    return manager_.resize(windowId(window), {rounded(size.width), rounded(size.height)},
                           callDeadline());
}

bool X11AccessibilityWindows::setMinimized(const AxWindow& window, bool minimized) {
    const auto deadline = callDeadline();
    const auto id = windowId(window);
    const auto state = manager_.state(id, deadline);
    if (!state) return false;
    if (state->isMinimized == minimized) return true;
    return minimized ? manager_.minimize(id, deadline) : manager_.activate(id, deadline);
}

bool X11AccessibilityWindows::raise(const AxWindow& window) {
    return manager_.raise(windowId(window), callDeadline());
}

bool X11AccessibilityWindows::setMain(const AxWindow& window, bool isMain) {
    // The main window of an application is the one above its others.
    return isMain && manager_.raise(windowId(window), callDeadline());
}

bool X11AccessibilityWindows::setFocused(const AxWindow& window, bool isFocused) {
    return isFocused && manager_.activate(windowId(window), callDeadline());
}

}  // namespace orvel::x11
