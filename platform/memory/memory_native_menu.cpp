#include "platform/memory/memory_native_menu.hpp"

#include <algorithm>
#include <utility>

namespace orvel::memory {

namespace {

void writeItem(JsonWriter& out, const MenuItem& item) {
    out.beginObject();
    if (item.isSeparator()) {
        out.member("separator", true);
    } else {
        out.member("title", item.title);
        if (item.isChecked) out.member("checked", true);
        if (!item.keyEquivalent.empty()) out.member("key", item.keyEquivalent);
    }
    out.endObject();
}

}  // namespace

void MemoryNativeMenus::popUp(NativeMenu menu, MenuPlace place,
                              std::function<void(std::size_t)> chosen) {
    auto effect = effects_.effect("menu");
    effect->beginObject().member("id", menu.id).key("items").beginArray();
    for (const MenuItem& item : menu.items) writeItem(*effect, item);
    effect->endArray()
        .key("at")
        .beginArray()
        .value(place.at.x)
        .value(place.at.y)
        .endArray()
        .member("in", place.panel ? panelName(*place.panel) : "statusButton")
        .endObject();
    items_ = std::move(menu.items);
    chosen_ = std::move(chosen);
}

bool MemoryNativeMenus::choose(std::string_view title) {
    const auto found = std::find_if(items_.begin(), items_.end(), [title](const MenuItem& item) {
        return !item.isSeparator() && item.title == title;
    });
    if (!isUp() || found == items_.end()) return false;
    const auto index = static_cast<std::size_t>(found - items_.begin());
    const auto chosen = std::exchange(chosen_, nullptr);
    chosen(index);
    return true;
}

}  // namespace orvel::memory
