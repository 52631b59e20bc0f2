#pragma once

#include "platform/base/result.hpp"
#include "platform/x11/dock_service.hpp"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orvel::x11 {

class BusConnection;

/// A panel program whose auto-hide is known.
struct PanelProgram {
    std::string_view name;
    /// Whether it runs in this session.
    bool (*isRunning)(const BusConnection& bus);
    /// Its settings as they are now, with the value that hides it in `hidden`.
    std::vector<HiddenPanelSetting> (*read)(const BusConnection& bus);
    std::string_view hidden;
    bool (*write)(const BusConnection& bus, const std::string& key, const std::string& value);
};

std::span<const PanelProgram> panelPrograms();

}  // namespace orvel::x11
