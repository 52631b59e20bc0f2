#include "app/login_item.hpp"

#include "app/preferences.hpp"
#include "platform/log.hpp"
#include "platform/login_items.hpp"

namespace orvel {

LoginItem::LoginItem(LoginItems& loginItems, Preferences& preferences, Log& log)
    : loginItems_(loginItems), preferences_(preferences), log_(log) {}

bool LoginItem::isEnabled() const { return preferences_.boolForKey(PreferenceKey::launchAtLogin); }

void LoginItem::toggle() {
    const bool wasEnabled = isEnabled();
    const Result<> done =
        wasEnabled ? loginItems_.unregisterProgram() : loginItems_.registerProgram();
    if (done) {
        preferences_.setBool(PreferenceKey::launchAtLogin, !wasEnabled);
    } else {
        log_.line("开机自启设置失败: " + done.error());
    }
}

}  // namespace orvel
