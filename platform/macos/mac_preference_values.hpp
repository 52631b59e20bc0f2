#pragma once

#include "platform/macos/mac_cf_ref.hpp"
#include "platform/preference_store.hpp"

namespace orvel::macos {

/// The value that an object of a property list stands for.
PreferenceValue preferenceOf(CFTypeRef object);
/// The stored object for a value; null for one that this program never writes.
CfRef<CFTypeRef> objectOf(const PreferenceValue& value);

}  // namespace orvel::macos
