#include "platform/panels.hpp"

#include <array>
#include <utility>

namespace orvel {

namespace {

constexpr std::array<std::pair<PanelId, std::string_view>, 6> kPanelNames{{
    {PanelId::settings, "settings"},
    {PanelId::taskbar, "taskbar"},
    {PanelId::startMenu, "startMenu"},
    {PanelId::clipboard, "clipboard"},
    {PanelId::finderMenu, "finderMenu"},
    {PanelId::geekMenuAnchor, "geekMenuAnchor"},
}};

}  // namespace

std::string_view panelName(PanelId id) {
    for (const auto& [panel, name] : kPanelNames) {
        if (panel == id) return name;
    }
    return {};
}

std::optional<PanelId> panelNamed(std::string_view name) {
    for (const auto& [panel, panelName] : kPanelNames) {
        if (panelName == name) return panel;
    }
    return std::nullopt;
}

}  // namespace orvel
