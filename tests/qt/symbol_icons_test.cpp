#include "platform/qt/symbol_icons.hpp"

#include "settings_ui/feature_cards.hpp"
#include "settings_ui/keyboard_drawing.hpp"

#include <QDirIterator>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace orvel::qt {
namespace {

bool hasInk(const QImage& image) {
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) > 128) return true;
        }
    }
    return false;
}

TEST(SymbolIcons, EverySymbolOfTheTableDrawsSomething) {
    for (const SymbolRow& row : symbolTable()) {
        EXPECT_TRUE(hasInk(symbolImage(row.name, 20, Qt::black))) << row.name;
    }
}

TEST(SymbolIcons, NamesStandOnceInOrder) {
    const auto table = symbolTable();
    EXPECT_EQ(std::ranges::adjacent_find(table, std::greater_equal{}, &SymbolRow::name),
              table.end());
}

TEST(SymbolIcons, EveryPictureInTheTreeBelongsToASymbol) {
    std::set<std::string> used;
    for (const SymbolRow& row : symbolTable()) used.insert(std::string(row.file));
    QDirIterator files(":/orvel/symbols", {"*.svg"}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString file = files.next().section('/', 3).chopped(4);
        EXPECT_TRUE(used.contains(file.toStdString())) << file.toStdString();
    }
}

TEST(SymbolIcons, SettingsUseOnlyKnownSymbols) {
    for (const FeatureCard& card : kFeatureCards) {
        EXPECT_FALSE(symbolImage(card.symbol, 8, Qt::black).isNull()) << card.symbol;
    }
    for (const DrawnKey& key : kDrawnKeys) {
        if (key.symbol.empty()) continue;
        EXPECT_FALSE(symbolImage(key.symbol, 8, Qt::black).isNull()) << key.symbol;
    }
}

TEST(SymbolIcons, TakesTheColour) {
    const QImage image = symbolImage("command.square.fill", 40, QColor(255, 0, 0));
    EXPECT_EQ(image.pixelColor(6, 20).rgb(), qRgb(255, 0, 0));
}

TEST(SymbolIcons, AnUnknownNameGivesAnEmptyPicture) {
    EXPECT_TRUE(symbolImage("no.such.symbol", 20, Qt::black).isNull());
    EXPECT_TRUE(symbolImage("trash", 0, Qt::black).isNull());
}

TEST(SymbolIcons, ADesktopWithSymbolsOfItsOwnIsAskedFirst) {
    setSymbolSource([](std::string_view name, int pixels) {
        QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
        image.fill(name == "trash" ? Qt::black : Qt::transparent);
        return name == "trash" ? image : QImage();
    });
    EXPECT_EQ(symbolImage("trash", 4, Qt::blue).pixelColor(0, 0), QColor(Qt::blue));
    EXPECT_TRUE(hasInk(symbolImage("folder", 20, Qt::blue)));
    setSymbolSource({});
}

}  // namespace
}  // namespace orvel::qt
