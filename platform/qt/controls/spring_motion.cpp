#include "platform/qt/controls/spring_motion.hpp"

namespace orvel::qt {

void SpringMotion::setTo(double to) {
    if (to_ == to) return;
    to_ = to;
    emit toChanged();
    if (!isComplete_ || !isAnimated_ || to_ == value_) {
        jump();
        return;
    }
    from_ = value_;
    startVelocity_ = velocity_ / (to_ - from_);
    stop();
    start();
}

void SpringMotion::componentComplete() {
    isComplete_ = true;
    jump();
}

void SpringMotion::updateCurrentTime(int milliseconds) {
    const SpringPoint point =
        springAt({response_, dampingFraction_}, milliseconds / 1000.0, startVelocity_);
    if (isSettled(point) || !isAnimated_) {
        jump();
        return;
    }
    velocity_ = point.velocity * (to_ - from_);
    setValue(from_ + (to_ - from_) * point.position);
}

void SpringMotion::setValue(double value) {
    if (value_ == value) return;
    value_ = value;
    emit valueChanged();
}

void SpringMotion::jump() {
    velocity_ = 0;
    stop();
    setValue(to_);
}

}  // namespace orvel::qt
