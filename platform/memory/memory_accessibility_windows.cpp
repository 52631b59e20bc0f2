#include "platform/memory/memory_accessibility_windows.hpp"

#include <algorithm>

namespace orvel::memory {

namespace {

AxWindow elementFor(const WorldWindow& window) {
    return {std::make_shared<const WindowNumber>(window.info.number)};
}

WindowNumber numberOf(const AxWindow& window) {
    return *std::static_pointer_cast<const WindowNumber>(window.element);
}

/// Everything of a write's effect up to its value.
JsonWriter& beginWrite(JsonWriter& out, const AxWindow& window, std::string_view attribute) {
    return out.beginObject()
        .member("window", std::int64_t{numberOf(window)})
        .member("set", attribute)
        .key("value");
}

bool belongsTo(const WorldWindow& window, ProcessId pid) {
    return window.ax && window.info.pid == pid;
}

}  // namespace

std::optional<AxWindow> MemoryAccessibilityWindows::focusedWindow(ProcessId pid) const {
    if (!world_.isTrusted) return std::nullopt;
    for (const WorldWindow& window : world_.windows) {
        if (belongsTo(window, pid) && window.ax->isFocused) return elementFor(window);
    }
    return std::nullopt;
}

std::optional<std::vector<AxWindow>> MemoryAccessibilityWindows::windows(ProcessId pid) const {
    if (!world_.isTrusted) return std::nullopt;
    std::vector<AxWindow> found;
    for (const WorldWindow& window : world_.windows) {
        if (belongsTo(window, pid)) found.push_back(elementFor(window));
    }
    return found;
}

AxWindowAttributes MemoryAccessibilityWindows::attributes(const AxWindow& window) const {
    const WorldWindow* reached = reach(window);
    if (reached == nullptr) return {};
    const WorldAxWindow& ax = *reached->ax;
    return {ax.role, ax.title, ax.position, ax.size, ax.isMinimized};
}

bool MemoryAccessibilityWindows::setPosition(const AxWindow& window, AxPoint position) {
    auto effect = effects_.effect("ax");
    beginWrite(*effect, window, "AXPosition");
    effect->beginArray().value(position.x).value(position.y).endArray().endObject();
    WorldWindow* reached = reach(window);
    if (reached != nullptr) reached->ax->position = position;
    return reached != nullptr;
}

bool MemoryAccessibilityWindows::setSize(const AxWindow& window, Size size) {
    auto effect = effects_.effect("ax");
    beginWrite(*effect, window, "AXSize");
    effect->beginArray().value(size.width).value(size.height).endArray().endObject();
    WorldWindow* reached = reach(window);
    if (reached == nullptr) return false;
    reached->ax->size = Size{std::max(size.width, reached->ax->minWidth), size.height};
    return true;
}

bool MemoryAccessibilityWindows::setMinimized(const AxWindow& window, bool minimized) {
    writeFlag(window, "AXMinimized", minimized);
    WorldWindow* reached = reach(window);
    if (reached != nullptr) reached->ax->isMinimized = minimized;
    return reached != nullptr;
}

bool MemoryAccessibilityWindows::raise(const AxWindow& window) {
    effects_.effect("ax")
        ->beginObject()
        .member("window", std::int64_t{numberOf(window)})
        .member("perform", "AXRaise")
        .endObject();
    return reach(window) != nullptr;
}

bool MemoryAccessibilityWindows::setMain(const AxWindow& window, bool isMain) {
    writeFlag(window, "AXMain", isMain);
    return reach(window) != nullptr;
}

bool MemoryAccessibilityWindows::setFocused(const AxWindow& window, bool isFocused) {
    writeFlag(window, "AXFocused", isFocused);
    WorldWindow* reached = reach(window);
    if (reached == nullptr) return false;
    if (isFocused) {
        for (WorldWindow& other : world_.windows) {
            if (belongsTo(other, reached->info.pid)) other.ax->isFocused = false;
        }
    }
    reached->ax->isFocused = isFocused;
    return true;
}

WorldWindow* MemoryAccessibilityWindows::reach(const AxWindow& window) const {
    if (!world_.isTrusted) return nullptr;
    WorldWindow* found = world_.window(numberOf(window));
    return found != nullptr && found->ax ? found : nullptr;
}

void MemoryAccessibilityWindows::writeFlag(const AxWindow& window, std::string_view attribute,
                                           bool value) {
    auto effect = effects_.effect("ax");
    beginWrite(*effect, window, attribute).value(value).endObject();
}

}  // namespace orvel::memory
