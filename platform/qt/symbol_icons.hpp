#pragma once

#include <QColor>
#include <QIcon>
#include <QImage>
#include <QString>

#include <functional>
#include <span>
#include <string_view>

namespace orvel::qt {

/// The icon that is drawn for one symbol name of the system.
struct SymbolRow {
    std::string_view name;
    std::string_view file;  ///< below symbols/, without the ending
};

/// Every symbol name that the system uses, once.
std::span<const SymbolRow> symbolTable();

/// The symbol in one colour, `pixels` high and wide. An unknown name gives an empty picture.
QImage symbolImage(std::string_view name, int pixels, const QColor& color);

/// The symbol for menus and tray, `points` high and wide, sharp at every scale.
QIcon symbolIcon(std::string_view name, const QColor& color, int points);

/// Draws a symbol in place of the built-in icons: in black, or empty when it knows none.
using SymbolSource = std::function<QImage(std::string_view name, int pixels)>;

/// Desktops with symbols of their own install theirs before the first picture is made.
void setSymbolSource(SymbolSource source);

}  // namespace orvel::qt
