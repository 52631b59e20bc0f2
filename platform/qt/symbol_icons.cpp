#include "platform/qt/symbol_icons.hpp"

#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

#include <algorithm>
#include <array>
#include <utility>

namespace orvel::qt {

namespace {

// Symbols keep their names where the icon set has them under another one.
constexpr std::array kSymbols{
    SymbolRow{"MenuBarIcon", "orvel/menu_bar_icon"},
    SymbolRow{"MenuBarIcon.paused", "orvel/menu_bar_icon_paused"},
    SymbolRow{"arrow.clockwise", "framework7/arrow_clockwise"},
    SymbolRow{"arrow.down.doc.fill", "framework7/arrow_down_doc_fill"},
    SymbolRow{"arrow.right", "framework7/arrow_right"},
    SymbolRow{"arrow.up.and.down.and.arrow.left.and.right", "framework7/move"},
    SymbolRow{"arrow.uturn.backward", "framework7/arrow_uturn_left"},
    SymbolRow{"character.cursor.ibeam", "framework7/text_cursor"},
    SymbolRow{"chart.bar.doc.horizontal", "framework7/doc_chart"},
    SymbolRow{"checkmark", "framework7/checkmark"},
    SymbolRow{"checkmark.circle.fill", "framework7/checkmark_circle_fill"},
    SymbolRow{"chevron.down", "framework7/chevron_down"},
    SymbolRow{"chevron.left.forwardslash.chevron.right",
              "framework7/chevron_left_slash_chevron_right"},
    SymbolRow{"chevron.right", "framework7/chevron_right"},
    SymbolRow{"chevron.up", "framework7/chevron_up"},
    SymbolRow{"chevron.up.chevron.down", "framework7/chevron_up_chevron_down"},
    SymbolRow{"command", "framework7/command"},
    SymbolRow{"command.square.fill", "orvel/command_square_fill"},
    SymbolRow{"computermouse", "orvel/computermouse"},
    SymbolRow{"delete.forward", "framework7/delete_right"},
    SymbolRow{"delete.left", "framework7/delete_left"},
    SymbolRow{"doc.append", "framework7/doc_append"},
    SymbolRow{"doc.on.clipboard", "framework7/doc_on_clipboard"},
    SymbolRow{"doc.plaintext", "framework7/doc_plaintext"},
    SymbolRow{"doc.text", "framework7/doc_text"},
    SymbolRow{"dock.rectangle", "framework7/rectangle_dock"},
    SymbolRow{"ellipsis", "framework7/ellipsis"},
    SymbolRow{"exclamationmark.triangle.fill", "framework7/exclamationmark_triangle_fill"},
    SymbolRow{"folder", "framework7/folder"},
    SymbolRow{"gearshape", "framework7/gear_alt"},
    SymbolRow{"globe", "framework7/globe"},
    SymbolRow{"info.circle.fill", "framework7/info_circle_fill"},
    SymbolRow{"keyboard", "framework7/keyboard"},
    SymbolRow{"keyboard.badge.ellipsis", "orvel/keyboard_badge_ellipsis"},
    SymbolRow{"keyboard.macwindow", "orvel/keyboard_macwindow"},
    SymbolRow{"lock", "framework7/lock"},
    SymbolRow{"magnifyingglass", "framework7/search"},
    SymbolRow{"menubar.rectangle", "orvel/menubar_rectangle"},
    SymbolRow{"moon", "framework7/moon"},
    SymbolRow{"option", "framework7/option"},
    SymbolRow{"pause.fill", "framework7/pause_fill"},
    SymbolRow{"person.circle.fill", "framework7/person_circle_fill"},
    SymbolRow{"person.crop.circle", "framework7/person_crop_circle"},
    SymbolRow{"pin", "framework7/pin"},
    SymbolRow{"pin.fill", "framework7/pin_fill"},
    SymbolRow{"pin.slash", "framework7/pin_slash"},
    SymbolRow{"play.fill", "framework7/play_fill"},
    SymbolRow{"plus.app", "framework7/plus_app"},
    SymbolRow{"power", "framework7/power"},
    SymbolRow{"rectangle.portrait.and.arrow.right", "orvel/rectangle_portrait_and_arrow_right"},
    SymbolRow{"rectangle.stack.fill", "framework7/rectangle_stack_fill"},
    SymbolRow{"scroll", "orvel/scroll"},
    SymbolRow{"speaker.wave.3", "framework7/speaker_3"},
    SymbolRow{"tablecells", "framework7/table"},
    SymbolRow{"terminal", "orvel/terminal"},
    SymbolRow{"trash", "framework7/trash"},
    SymbolRow{"uiwindow.split.2x1", "framework7/uiwindow_split_2x1"},
    SymbolRow{"xmark", "framework7/xmark"},
    SymbolRow{"xmark.circle.fill", "framework7/xmark_circle_fill"},
};

SymbolSource& installedSource() {
    static SymbolSource source;
    return source;
}

QImage builtInSymbol(std::string_view name, int pixels) {
    const auto row = std::ranges::find(kSymbols, name, &SymbolRow::name);
    if (row == kSymbols.end()) return {};
    QSvgRenderer renderer(":/orvel/symbols/" +
                          QString::fromUtf8(row->file.data(), static_cast<int>(row->file.size())) +
                          ".svg");
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    return image;
}

}  // namespace

std::span<const SymbolRow> symbolTable() { return kSymbols; }

QImage symbolImage(std::string_view name, int pixels, const QColor& color) {
    QImage image;
    if (pixels <= 0) return image;
    if (installedSource()) image = installedSource()(name, pixels);
    if (image.isNull()) image = builtInSymbol(name, pixels);
    if (image.isNull()) return image;
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
    return image;
}

QIcon symbolIcon(std::string_view name, const QColor& color, int points) {
    QIcon icon;
    for (const int scale : {1, 2, 3}) {
        QImage image = symbolImage(name, points * scale, color);
        if (!image.isNull()) icon.addPixmap(QPixmap::fromImage(std::move(image)));
    }
    return icon;
}

void setSymbolSource(SymbolSource source) { installedSource() = std::move(source); }

}  // namespace orvel::qt
