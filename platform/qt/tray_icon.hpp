#pragma once

#include <QColor>
#include <QIcon>
#include <QString>

#include <optional>
#include <string_view>

namespace orvel::qt {

/// What is known of the tray that an icon goes to.
struct TraySurroundings {
    /// The colour of symbols there, where the tray tells.
    std::optional<QColor> symbolColor{};
    /// Whether the tray takes the names of icons and colours the symbolic ones itself.
    bool takesNames = false;
};

/// A symbol for the tray, sharp at every scale. Where the tray does not tell its colours, the
/// symbol is light with a dark edge, so that it shows on every ground. Null for an unknown symbol.
QIcon trayIcon(std::string_view symbol, const TraySurroundings& surroundings);

}  // namespace orvel::qt
