#include "settings_ui/view/view_text.hpp"

namespace orvel::settings_view {

QString toQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QStringList toQStringList(const std::vector<std::string>& texts) {
    QStringList list;
    for (const std::string& text : texts) list.append(toQString(text));
    return list;
}

QColor toQColor(const RgbColor& color) {
    return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                            static_cast<float>(color.blue));
}

}  // namespace orvel::settings_view
