#include "platform/macos/mac_enhanced_mode.hpp"

namespace orvel::macos {

namespace {

const CFStringRef kEnhancedUserInterface = CFSTR("AXEnhancedUserInterface");

}  // namespace

void EnhancedMode::pauseFor(const AxBudget& budget, AXUIElementRef window) {
    pid_t pid = 0;
    if (AXUIElementGetPid(window, &pid) != kAXErrorSuccess || paused_.contains(pid)) return;
    Paused& paused = paused_[pid];
    const CfRef<AXUIElementRef> application(AXUIElementCreateApplication(pid));
    CfRef<CFTypeRef> old = copyAttribute(budget, application.get(), kEnhancedUserInterface);
    if (!asBool(old.get()).value_or(false) || !budget.allows(application.get())) return;
    AXUIElementSetAttributeValue(application.get(), kEnhancedUserInterface, kCFBooleanFalse);
    paused = {application, std::move(old)};
}

void EnhancedMode::restore() {
    // What was switched off is switched on again even when the budget is used up.
    const AxBudget own;
    for (const auto& [pid, paused] : paused_) {
        if (!paused.old || !own.allows(paused.application.get())) continue;
        AXUIElementSetAttributeValue(paused.application.get(), kEnhancedUserInterface,
                                     paused.old.get());
    }
    paused_.clear();
}

}  // namespace orvel::macos
