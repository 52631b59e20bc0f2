#include "platform/qt/controls/appearance.hpp"

#include <QFont>
#include <QGuiApplication>
#include <QJSEngine>

namespace orvel::qt {

Appearance* Appearance::create(QQmlEngine*, QJSEngine*) {
    Appearance& appearance = SharedInstance<Appearance>::get();
    QJSEngine::setObjectOwnership(&appearance, QJSEngine::CppOwnership);
    return &appearance;
}

QString Appearance::fontFamily() const { return QGuiApplication::font().family(); }

void Appearance::setDark(bool isDark) {
    if (isDark_ == isDark) return;
    isDark_ = isDark;
    emit isDarkChanged();
}

void Appearance::setComposited(bool isComposited) {
    if (isComposited_ == isComposited) return;
    isComposited_ = isComposited;
    emit isCompositedChanged();
}

void Appearance::setPrefersReducedMotion(bool prefersReducedMotion) {
    if (prefersReducedMotion_ == prefersReducedMotion) return;
    prefersReducedMotion_ = prefersReducedMotion;
    emit prefersReducedMotionChanged();
}

}  // namespace orvel::qt
