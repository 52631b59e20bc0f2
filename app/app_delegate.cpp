#include "app/app_delegate.hpp"

#include "app/dock_restorer.hpp"
#include "app/preferences.hpp"
#include "app/single_instance.hpp"
#include "app/status_item_controller.hpp"
#include "engine/orvel_engine.hpp"
#include "platform/app_control.hpp"
#include "platform/log.hpp"
#include "platform/run_loop.hpp"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace orvel {

namespace {

constexpr std::int64_t kToolTipDelayMilliseconds = 150;

/// The cards that turn the engine on at start; the other five take no part.
constexpr std::array kEngineCards{
    PreferenceKey::cardModifier, PreferenceKey::cardEject,  PreferenceKey::cardSnap,
    PreferenceKey::cardFinder,   PreferenceKey::cardSyscmd, PreferenceKey::cardTab,
    PreferenceKey::cardFn,       PreferenceKey::cardScroll, PreferenceKey::cardShift,
    PreferenceKey::cardFkeys,
};

}  // namespace

AppDelegate::AppDelegate(AppDelegateParts parts, Preferences& preferences, AppControl& appControl,
                         RunLoop& runLoop, Log& log)
    : parts_(parts),
      preferences_(preferences),
      appControl_(appControl),
      runLoop_(runLoop),
      log_(log) {}

void AppDelegate::applicationDidFinishLaunching() {
    if (parts_.singleInstance.yieldsToRunningCopy()) return;
    runLoop_.post([&appControl = appControl_] { appControl.closeStrayWindows(); });
    preferences_.setInteger(PreferenceKey::initialToolTipDelay, kToolTipDelayMilliseconds);
    if (!preferences_.boolForKey(PreferenceKey::cardTaskbar)) parts_.dockRestorer.repairAtStart();
    activateMainApp();
}

void AppDelegate::activateMainApp() {
    if (std::exchange(isActivated_, true)) return;
    startEngine();
    parts_.services.windowPictures.startActiveWindowCache();
    parts_.services.clipboard.startListening();
    enableEngineByCards();
    showTaskbarWhenEnabled();
    parts_.statusItem.setupStatusBar();
}

void AppDelegate::startEngine() {
    parts_.engine.start();
    parts_.engine.setMouseSideButtonEnabled(preferences_.shownFlag(PreferenceKey::cardMouseSide));
    parts_.engine.setAltMenuEnabled(preferences_.shownFlag(PreferenceKey::cardAltMenu));
}

void AppDelegate::enableEngineByCards() {
    const bool isAnyOn = std::ranges::any_of(
        kEngineCards, [this](PreferenceKey card) { return preferences_.boolForKey(card); });
    parts_.engine.setWindowsModeEnabled(isAnyOn);
    log_.line(std::string("⚡️ 开机自检完毕，引擎工作状态已设为: ") +
              (isAnyOn ? "true" : "false"));
}

void AppDelegate::showTaskbarWhenEnabled() {
    if (!preferences_.boolForKey(PreferenceKey::cardTaskbar)) return;
    parts_.services.overlay.showTaskbar();
    parts_.services.overlay.toggleNativeDockAutoHide(true);
}

void AppDelegate::applicationWillTerminate() {
    if (!isActivated_ || !preferences_.boolForKey(PreferenceKey::cardTaskbar)) return;
    parts_.dockRestorer.restoreAtExit();
}

}  // namespace orvel
