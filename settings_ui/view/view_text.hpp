#pragma once

#include "settings_ui/feature_cards.hpp"

#include <QColor>
#include <QString>
#include <QStringList>

#include <string>
#include <string_view>
#include <vector>

namespace orvel::settings_view {

QString toQString(std::string_view text);
QStringList toQStringList(const std::vector<std::string>& texts);
QColor toQColor(const RgbColor& color);

}  // namespace orvel::settings_view
