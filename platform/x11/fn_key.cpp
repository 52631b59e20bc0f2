#include "platform/x11/fn_key.hpp"

#include "platform/x11/key_map.hpp"

namespace orvel::x11 {

FnKey readFnKey(const PlatformTable& table) {
    FnKey fn;
    for (const TableEntry& entry : table.section("keys")) {
        if (entry.key != "fn") {
            fn.errors.push_back(table.errorAt(entry, "'" + entry.key + "' cannot be set (fn)"));
        } else if (!isKeyName(entry.value)) {
            fn.errors.push_back(table.errorAt(
                entry, "no key is called '" + entry.value + "' (such as Menu, Scroll_Lock, RALT)"));
        } else {
            fn.name = entry.value;
        }
    }
    return fn;
}

}  // namespace orvel::x11
