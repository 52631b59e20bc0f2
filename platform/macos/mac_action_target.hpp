#pragma once

#include "platform/macos/mac_cf_ref.hpp"

#include <functional>
#include <objc/objc.h>

namespace orvel::macos {

/// An object for the target of buttons and menu items: `told` gets the sender of each action.
CfRef<CFTypeRef> makeActionTarget(std::function<void(CFTypeRef sender)> told);
/// The action that goes with it.
SEL targetAction();

}  // namespace orvel::macos
