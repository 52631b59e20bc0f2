#include "engine/snapping/window_snapper.hpp"

#include <chrono>

namespace orvel {

namespace {

/// Snapping runs inside the event callback, and a hung application must not hold up the keyboard.
constexpr std::chrono::milliseconds kCallBudget{100};

class BudgetScope {
public:
    explicit BudgetScope(AccessibilityWindows& windows) : windows_(windows) {
        windows_.setBudget(kCallBudget);
    }
    ~BudgetScope() { windows_.setBudget(std::nullopt); }
    BudgetScope(const BudgetScope&) = delete;
    BudgetScope& operator=(const BudgetScope&) = delete;

private:
    AccessibilityWindows& windows_;
};

}  // namespace

void WindowSnapper::snapActiveWindow(SnapDirection direction) {
    const auto front = ports_.workspace.frontmostApplication();
    if (!front) return;
    const BudgetScope budget(ports_.windows);
    const auto window = ports_.windows.focusedWindow(front->pid);
    if (!window) {
        if (direction == SnapDirection::up) bringBackMinimizedWindow(front->pid);
        return;
    }
    const auto screens = ports_.screens.screens();
    if (screens.empty()) return;

    const AxWindowAttributes read = ports_.windows.attributes(*window);
    const AxPoint position = read.position.value_or(AxPoint{});
    const Size size = read.size.value_or(Size{});
    apply({.window = *window,
           .key = std::to_string(front->pid) + "_" + read.title.value_or(""),
           .frame = {position.x, position.y, size.width, size.height}},
          direction, screens.front());
}

void WindowSnapper::bringBackMinimizedWindow(ProcessId pid) {
    const auto windows = ports_.windows.windows(pid);
    if (!windows) return;
    for (const AxWindow& window : *windows) {
        if (ports_.windows.attributes(window).isMinimized != true) continue;
        ports_.log.line("🔼 从 Dock 中拉起最小化窗口！");
        ports_.windows.setMinimized(window, false);
        return;
    }
}

void WindowSnapper::apply(const Target& target, SnapDirection direction, const Screen& screen) {
    const auto known = state_.windowStates.find(target.key);
    const WindowSnapState state =
        known == state_.windowStates.end() ? WindowSnapState::unsnapped : known->second;
    const SnapStep step = snapStep(direction, state);
    if (step.savesFrame) state_.windowOriginalFrames[target.key] = target.frame;
    switch (step.kind) {
        case SnapStep::Kind::snap: return snap(target, direction, screen);
        case SnapStep::Kind::restore: return restore(target);
        case SnapStep::Kind::minimize:
            ports_.windows.setMinimized(target.window, true);
            state_.windowStates[target.key] = WindowSnapState::unsnapped;
            return;
    }
}

void WindowSnapper::snap(const Target& target, SnapDirection direction, const Screen& screen) {
    const SnapArea area =
        snapArea(screen, direction, preferences_.boolForKey(PreferenceKey::cardTaskbar));
    ports_.windows.setPosition(target.window, area.corner);
    ports_.windows.setSize(target.window, area.requestedSize);
    const Size taken = ports_.windows.attributes(target.window).size.value_or(area.requestedSize);
    ports_.windows.setPosition(target.window,
                               {area.leftEdge(direction, taken.width), area.corner.y});
    state_.windowStates[target.key] = snappedState(direction);
}

void WindowSnapper::restore(const Target& target) {
    const auto saved = state_.windowOriginalFrames.find(target.key);
    if (saved != state_.windowOriginalFrames.end()) applyWindowFrame(target.window, saved->second);
    state_.windowStates[target.key] = WindowSnapState::unsnapped;
}

void WindowSnapper::applyWindowFrame(const AxWindow& window, const AxRect& frame) {
    // The detour through the corner leaves room to grow: a window at its old place could be
    // clamped by the edge of the screen.
    ports_.windows.setPosition(window, {0, 0});
    ports_.windows.setSize(window, frame.size());
    ports_.windows.setPosition(window, frame.origin());
}

}  // namespace orvel
