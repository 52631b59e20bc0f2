#include "platform/qt/chinese_fonts.hpp"

#include <QFont>
#include <QFontDatabase>
#include <QFontInfo>
#include <QGuiApplication>

#include <algorithm>
#include <array>

namespace orvel::qt {

namespace {

/// What distributions install for Simplified Chinese, the best first.
constexpr std::array kFamilies{"Noto Sans CJK SC",   "Noto Sans SC",        "Source Han Sans SC",
                               "Source Han Sans CN", "WenQuanYi Micro Hei", "WenQuanYi Zen Hei"};

}  // namespace

void preferSimplifiedChinese() {
    const QStringList installed = QFontDatabase::families(QFontDatabase::SimplifiedChinese);
    const auto* found = std::ranges::find_if(kFamilies, [&installed](const char* family) {
        return installed.contains(QLatin1String(family));
    });
    if (found == kFamilies.end()) return;
    QFont font = QGuiApplication::font();
    // An alias such as "Sans Serif" gives way to its substitute altogether; a real family does not.
    const QString family = QFontInfo(font).family();
    const QString chinese = QLatin1String(*found);
    if (family == chinese) return;
    QFont::insertSubstitution(family, chinese);
    font.setFamilies({family, chinese});
    QGuiApplication::setFont(font);
}

}  // namespace orvel::qt
