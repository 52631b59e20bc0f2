#pragma once

#include "platform/qt/spring.hpp"

#include <QAbstractAnimation>
#include <QObject>
#include <QQmlParserStatus>
#include <QtQml/qqmlregistration.h>

namespace orvel::qt {

/// A number that follows `to` on a spring. A new target keeps the speed of the running movement.
class SpringMotion : public QAbstractAnimation, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    Q_PROPERTY(double to READ to WRITE setTo NOTIFY toChanged FINAL)
    Q_PROPERTY(double value READ value NOTIFY valueChanged FINAL)
    Q_PROPERTY(double response MEMBER response_ FINAL)
    Q_PROPERTY(double dampingFraction MEMBER dampingFraction_ FINAL)
    /// While false, the value jumps to its target: in hidden windows and with reduced motion.
    Q_PROPERTY(bool isAnimated MEMBER isAnimated_ FINAL)
    QML_ELEMENT

public:
    using QAbstractAnimation::QAbstractAnimation;

    [[nodiscard]] double to() const { return to_; }
    void setTo(double to);
    [[nodiscard]] double value() const { return value_; }

    [[nodiscard]] int duration() const override { return -1; }
    void classBegin() override {}
    void componentComplete() override;

signals:
    void toChanged();
    void valueChanged();

protected:
    void updateCurrentTime(int milliseconds) override;

private:
    void setValue(double value);
    void jump();

    double to_ = 0;
    double from_ = 0;
    double value_ = 0;
    double velocity_ = 0;       ///< per second
    double startVelocity_ = 0;  ///< per second and per unit of the way
    double response_ = 0.25;
    double dampingFraction_ = 1;
    bool isAnimated_ = true;
    bool isComplete_ = false;
};

}  // namespace orvel::qt
