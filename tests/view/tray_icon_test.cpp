#include "platform/qt/tray_icon.hpp"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <QtGlobal>
#include <gtest/gtest.h>

#include <algorithm>

namespace orvel::qt {
namespace {

/// The least and the greatest lightness of the points that hide what lies behind them.
struct Range {
    int least = 255;
    int greatest = 0;
};

Range lightness(const QIcon& icon, int pixels) {
    const QImage image = icon.pixmap(pixels).toImage();
    constexpr int kOpaque = 150;
    Range range;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, y);
            if (color.alpha() < kOpaque) continue;
            range.least = std::min(range.least, color.lightness());
            range.greatest = std::max(range.greatest, color.lightness());
        }
    }
    return range;
}

/// A folder of icons as an installation leaves it.
class InstalledIcons {
public:
    InstalledIcons() {
        folder_.isValid();
        QDir(folder_.path()).mkpath("hicolor/symbolic/apps");
        QFile theme(folder_.filePath("hicolor/index.theme"));
        EXPECT_TRUE(theme.open(QIODevice::WriteOnly));
        theme.write(
            "[Icon Theme]\nName=Hicolor\nDirectories=symbolic/apps\n"
            "[symbolic/apps]\nSize=16\nMinSize=8\nMaxSize=512\nType=Scalable\n");
        EXPECT_TRUE(QFile::copy(
            qEnvironmentVariable("ORVEL_SOURCE_DIR") + "/packaging/linux/orvel-symbolic.svg",
            folder_.filePath("hicolor/symbolic/apps/orvel-symbolic.svg")));
        QIcon::setThemeSearchPaths({folder_.path()});
        QIcon::setThemeName("hicolor");
    }

private:
    QTemporaryDir folder_;
};

TEST(TrayIcon, ShowsOnEveryGroundWhereTheTrayDoesNotTell) {
    for (const auto* symbol : {"MenuBarIcon", "MenuBarIcon.paused"}) {
        for (const int pixels : {18, 36}) {
            const Range range = lightness(trayIcon(symbol, {}), pixels);
            EXPECT_LT(range.least, 70) << symbol << ' ' << pixels;
            EXPECT_GT(range.greatest, 200) << symbol << ' ' << pixels;
        }
    }
}

TEST(TrayIcon, HasTheOneColourThatTheTrayTells) {
    const Range range = lightness(trayIcon("MenuBarIcon", {.symbolColor = QColor(20, 20, 20)}), 36);
    EXPECT_LT(range.greatest, 40);
}

TEST(TrayIcon, AnUnknownSymbolHasNone) {
    EXPECT_TRUE(trayIcon("no such symbol", {}).isNull());
    EXPECT_TRUE(trayIcon("no such symbol", {.takesNames = true}).isNull());
}

TEST(TrayIcon, IsNamedOnlyForTraysThatTakeNamesAndOnlyWhereItIsInstalled) {
    QIcon::setThemeSearchPaths({});
    EXPECT_EQ(trayIcon("MenuBarIcon", {.takesNames = true}).name(), "");
    const InstalledIcons installed;
    EXPECT_EQ(trayIcon("MenuBarIcon", {}).name(), "");
    const QIcon named = trayIcon("MenuBarIcon", {.takesNames = true});
    EXPECT_EQ(named.name(), "orvel-symbolic");
    // Trays that do not find it show the pictures.
    EXPECT_LT(lightness(named, 18).least, 70);
    EXPECT_GT(lightness(named, 18).greatest, 200);
    EXPECT_EQ(trayIcon("MenuBarIcon.paused", {.takesNames = true}).name(), "");
}

}  // namespace
}  // namespace orvel::qt

int main(int argc, char** argv) {
    // The cases are listed without the environment that they run in.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
