#pragma once

#include <string>

namespace orvel::x11 {

/// Folders of the user by the XDG base directory rules, without a slash at the end. A variable
/// that is empty or no absolute path counts as not set. Main thread.
std::string homeFolder();
std::string configFolder();
std::string cacheFolder();
std::string stateFolder();
/// Where this login session keeps what ends with it, made for the user alone when it is missing;
/// empty when there is no safe place.
std::string runtimeFolder();

}  // namespace orvel::x11
