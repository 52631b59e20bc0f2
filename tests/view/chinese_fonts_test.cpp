#include "platform/qt/chinese_fonts.hpp"

#include <QGlyphRun>
#include <QGuiApplication>
#include <QRawFont>
#include <QTextLayout>
#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace orvel::qt {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;
using testing::UnorderedElementsAre;

/// The fonts that a text of the application's own family is written with.
std::vector<std::string> fontsOf(const QString& text, QFont::Weight weight = QFont::Normal) {
    QFont font(QGuiApplication::font().family());
    font.setWeight(weight);
    QTextLayout layout(text, font);
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    std::vector<std::string> families;
    for (const QGlyphRun& run : layout.glyphRuns()) {
        families.push_back(run.rawFont().familyName().toStdString());
    }
    return families;
}

TEST(ChineseFonts, ChineseIsWrittenInItsSimplifiedFormsBesideTheFontOfTheDesktop) {
    QGuiApplication::setFont(QFont(QStringLiteral("Noto Sans")));
    preferSimplifiedChinese();
    for (const auto weight : {QFont::Normal, QFont::DemiBold}) {
        EXPECT_THAT(fontsOf(QStringLiteral("已关闭"), weight), ElementsAre("Noto Sans CJK SC"));
        EXPECT_THAT(fontsOf(QStringLiteral("Cmd 键"), weight),
                    UnorderedElementsAre("Noto Sans", "Noto Sans CJK SC"));
    }
}

TEST(ChineseFonts, AnAliasOfAFontKeepsTheFontThatItStandsFor) {
    QGuiApplication::setFont(QFont(QStringLiteral("Sans Serif")));
    const auto before = fontsOf(QStringLiteral("Cmd"));
    preferSimplifiedChinese();
    EXPECT_EQ(fontsOf(QStringLiteral("Cmd")), before);
    EXPECT_THAT(fontsOf(QStringLiteral("已关闭")), Not(Contains("Noto Sans CJK JP")));
}

}  // namespace
}  // namespace orvel::qt

int main(int argc, char** argv) {
    // The cases are listed without the environment that they run in.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
