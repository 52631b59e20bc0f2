#pragma once

#include "platform/base/result.hpp"
#include "platform/macos/mac_cf_ref.hpp"

#include <string>
#include <string_view>

@class NSError;
@class NSString;

namespace orvel::macos {

/// Never null: bytes that are not UTF-8 are read as Latin-1.
CfRef<CFStringRef> cfString(std::string_view utf8);
/// Empty for null.
std::string utf8(CFStringRef text);
std::string utf8(NSString* text);
/// Empty unless `object` is a string.
std::string utf8OfObject(CFTypeRef object);
/// An error in the system's words.
Failure failureOf(NSError* error);

}  // namespace orvel::macos
