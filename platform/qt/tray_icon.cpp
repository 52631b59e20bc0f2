#include "platform/qt/tray_icon.hpp"

#include "platform/qt/symbol_icons.hpp"

#include <QIconEngine>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace orvel::qt {

namespace {

constexpr int kPoints = 18;
const QColor kLight(0xf5, 0xf5, 0xf5);
const QColor kEdge(0x10, 0x10, 0x14, 0xb4);

/// The installed icon of this symbol, which trays may colour.
constexpr std::string_view kThemedSymbol = "MenuBarIcon";
const QString kThemedName = QStringLiteral("orvel-symbolic");

/// The symbol with an edge around every line of it.
QImage edged(std::string_view symbol, int pixels) {
    QImage image = symbolImage(symbol, pixels, kLight);
    if (image.isNull()) return image;
    QImage edge(image.size(), image.format());
    edge.fill(Qt::transparent);
    QPainter painter(&edge);
    const double reach = std::max(1.0, pixels / 24.0);
    constexpr int kDirections = 8;
    for (int i = 0; i < kDirections; ++i) {
        const double angle = i * 2 * M_PI / kDirections;
        painter.drawImage(QPointF(reach * std::cos(angle), reach * std::sin(angle)), image);
    }
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(edge.rect(), kEdge);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.drawImage(0, 0, image);
    return edge;
}

QIcon pictures(std::string_view symbol, const std::optional<QColor>& color) {
    if (color) return symbolIcon(symbol, *color, kPoints);
    QIcon icon;
    for (const int scale : {1, 2, 3}) {
        QImage image = edged(symbol, kPoints * scale);
        if (!image.isNull()) icon.addPixmap(QPixmap::fromImage(std::move(image)));
    }
    return icon;
}

/// Pictures of ours under the name of an icon that the tray may find by itself.
class NamedPictures final : public QIconEngine {
public:
    NamedPictures(QString name, QIcon pictures)
        : name_(std::move(name)), pictures_(std::move(pictures)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode,
               QIcon::State state) override {
        pictures_.paint(painter, rect, Qt::AlignCenter, mode, state);
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return pictures_.pixmap(size, mode, state);
    }
    QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) override {
        return pictures_.availableSizes(mode, state);
    }
    QString iconName() override { return name_; }
    bool isNull() override { return pictures_.isNull(); }
    [[nodiscard]] QIconEngine* clone() const override { return new NamedPictures(*this); }

private:
    QString name_;
    QIcon pictures_;
};

}  // namespace

QIcon trayIcon(std::string_view symbol, const TraySurroundings& surroundings) {
    QIcon icon = pictures(symbol, surroundings.symbolColor);
    if (!surroundings.takesNames || symbol != kThemedSymbol) return icon;
    // A tray that looks for an icon that is not installed may show none at all.
    if (!QIcon::hasThemeIcon(kThemedName)) return icon;
    return QIcon(new NamedPictures(kThemedName, std::move(icon)));
}

}  // namespace orvel::qt
