#pragma once

#include "platform/base/result.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace orvel::x11 {

/// Starts the application of a desktop file, or a program that has none, with files or addresses.
/// The display is the one the services are connected to. May wait for the message bus; any
/// thread but the main one.
class ApplicationLauncher {
public:
    explicit ApplicationLauncher(std::string display) : display_(std::move(display)) {}

    Result<> openApplication(const std::string& path, const std::vector<std::string>& uris) const;
    /// Without files, with `folder` as its working directory.
    Result<> openApplicationIn(const std::string& path, const std::string& folder) const;
    /// With the application that the desktop has for it.
    Result<> openUri(const std::string& uri) const;

private:
    std::string display_;
};

/// A path as a `file://` address; anything that has a scheme stays as it is.
std::string toUri(std::string_view pathOrUri);

}  // namespace orvel::x11
