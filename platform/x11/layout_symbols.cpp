#include "platform/x11/layout_symbols.hpp"

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon.h>

#include <memory>
#include <set>

namespace orvel::x11 {

bool typesAscii(xkb_keymap* keymap, unsigned group) {
    std::set<xkb_keysym_t> letters;
    const auto last = xkb_keymap_max_keycode(keymap);
    for (auto key = xkb_keymap_min_keycode(keymap); key <= last; ++key) {
        const xkb_keysym_t* symbols = nullptr;
        if (group >= xkb_keymap_num_layouts_for_key(keymap, key)) continue;
        const int count = xkb_keymap_key_get_syms_by_level(keymap, key, group, 0, &symbols);
        if (count == 1 && symbols[0] >= XKB_KEY_a && symbols[0] <= XKB_KEY_z)
            letters.insert(symbols[0]);
    }
    return letters.size() == XKB_KEY_z - XKB_KEY_a + 1;
}

bool layoutTypesAscii(const std::string& layout, const std::string& variant) {
    const std::unique_ptr<xkb_context, void (*)(xkb_context*)> context(
        xkb_context_new(XKB_CONTEXT_NO_FLAGS), xkb_context_unref);
    if (context == nullptr) return false;
    // A layout that does not exist is no news for the user's terminal.
    xkb_context_set_log_level(context.get(), XKB_LOG_LEVEL_CRITICAL);
    const xkb_rule_names names{.rules = "evdev",
                               .model = "pc105",
                               .layout = layout.c_str(),
                               .variant = variant.c_str(),
                               .options = ""};
    const std::unique_ptr<xkb_keymap, void (*)(xkb_keymap*)> keymap(
        xkb_keymap_new_from_names(context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS),
        xkb_keymap_unref);
    return keymap != nullptr && typesAscii(keymap.get(), 0);
}

}  // namespace orvel::x11
