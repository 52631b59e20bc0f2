#include "platform/qt/desktop_coordinates.hpp"

#include <QGuiApplication>
#include <QScreen>

namespace orvel::qt {

namespace {

struct MainScreen {
    double height = 0;  ///< in Qt's points
    double scale = 1;
};

MainScreen mainScreen() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (screen == nullptr) return {};
    return {static_cast<double>(screen->geometry().height()), screen->devicePixelRatio()};
}

}  // namespace

QRect toQt(ScreenRect frame) {
    const MainScreen main = mainScreen();
    const double middle = frame.midX() / main.scale;
    const double top = main.height - frame.maxY() / main.scale;
    return {qRound(middle - frame.width / 2), qRound(top), qRound(frame.width),
            qRound(frame.height)};
}

QPoint toQt(ScreenPoint point) {
    const MainScreen main = mainScreen();
    return {qRound(point.x / main.scale), qRound(main.height - point.y / main.scale)};
}

ScreenRect fromQt(QRect rect) {
    const MainScreen main = mainScreen();
    const double bottom = main.height - rect.y() - rect.height();
    return {rect.x() * main.scale, bottom * main.scale, rect.width() * main.scale,
            rect.height() * main.scale};
}

ScreenPoint fromQt(QPoint point) {
    const MainScreen main = mainScreen();
    return {point.x() * main.scale, (main.height - point.y()) * main.scale};
}

}  // namespace orvel::qt
