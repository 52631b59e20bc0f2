#pragma once

#include "platform/base/shared_instance.hpp"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace orvel::qt {

/// What the desktop wants of every surface: light or dark, translucent or not, still or moving.
/// The host keeps it up to date; the views read it.
class Appearance : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isDark READ isDark WRITE setDark NOTIFY isDarkChanged FINAL)
    Q_PROPERTY(
        bool isComposited READ isComposited WRITE setComposited NOTIFY isCompositedChanged FINAL)
    Q_PROPERTY(bool prefersReducedMotion READ prefersReducedMotion WRITE setPrefersReducedMotion
                   NOTIFY prefersReducedMotionChanged FINAL)
    /// The family that the desktop writes its own texts in.
    Q_PROPERTY(QString fontFamily READ fontFamily CONSTANT FINAL)
    QML_ELEMENT
    QML_SINGLETON

public:
    /// Without a default: views must find the one that the host made, never make their own.
    explicit Appearance(QObject* parent) : QObject(parent) {}

    /// The installed instance, for the views: the host has made one before the first view.
    static Appearance* create(QQmlEngine*, QJSEngine*);

    [[nodiscard]] QString fontFamily() const;
    [[nodiscard]] bool isDark() const { return isDark_; }
    void setDark(bool isDark);
    [[nodiscard]] bool isComposited() const { return isComposited_; }
    void setComposited(bool isComposited);
    [[nodiscard]] bool prefersReducedMotion() const { return prefersReducedMotion_; }
    void setPrefersReducedMotion(bool prefersReducedMotion);

signals:
    void isDarkChanged();
    void isCompositedChanged();
    void prefersReducedMotionChanged();

private:
    bool isDark_ = false;
    bool isComposited_ = false;
    bool prefersReducedMotion_ = false;
    SharedInstance<Appearance> installed_{*this};
};

}  // namespace orvel::qt
