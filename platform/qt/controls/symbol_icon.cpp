#include "platform/qt/controls/symbol_icon.hpp"

#include "platform/qt/symbol_icons.hpp"

#include <QPainter>
#include <QQuickWindow>

#include <algorithm>
#include <cmath>

namespace orvel::qt {

SymbolIcon::SymbolIcon(QQuickItem* parent) : QQuickPaintedItem(parent) { setImplicitSize(16, 16); }

void SymbolIcon::setName(const QString& name) {
    if (name_ == name) return;
    name_ = name;
    emit nameChanged();
    update();
}

void SymbolIcon::setColor(const QColor& color) {
    if (color_ == color) return;
    color_ = color;
    emit colorChanged();
    update();
}

void SymbolIcon::paint(QPainter* painter) {
    const double side = std::min(width(), height());
    const double scale = window() == nullptr ? 1 : window()->effectiveDevicePixelRatio();
    const int pixels = static_cast<int>(std::lround(side * scale));
    const QImage image = symbolImage(name_.toStdString(), pixels, color_);
    if (image.isNull()) return;
    painter->drawImage(QRectF((width() - side) / 2, (height() - side) / 2, side, side), image);
}

}  // namespace orvel::qt
