#include "platform/qt/qt_run_loop.hpp"

#include <QCoreApplication>
#include <QObject>
#include <QPointer>
#include <QSocketNotifier>
#include <QThreadPool>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <utility>

namespace orvel::qt {

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::milliseconds;

/// Enough for one blocked script beside the work that people wait for.
constexpr int kBackgroundThreads = 4;

/// From here on a timer may share its wake-up with others.
constexpr Milliseconds kCoarseFrom{500};

Milliseconds atLeast(Duration duration) {
    return std::max(std::chrono::ceil<Milliseconds>(duration), Milliseconds::zero());
}

/// The handler may destroy its owner: the Qt object goes away later, and the connection keeps the
/// handler alive while it runs.
class TimerOwner final : public Timer {
public:
    explicit TimerOwner(QTimer* timer) : timer_(timer) {}
    ~TimerOwner() override {
        if (timer_ == nullptr) return;
        timer_->stop();
        timer_->disconnect();
        timer_->deleteLater();
    }

private:
    QPointer<QTimer> timer_;
};

class WatchOwner final : public ReadableWatch {
public:
    explicit WatchOwner(QSocketNotifier* notifier) : notifier_(notifier) {}
    ~WatchOwner() override {
        if (notifier_ == nullptr) return;
        notifier_->setEnabled(false);
        notifier_->disconnect();
        notifier_->deleteLater();
    }

private:
    QPointer<QSocketNotifier> notifier_;
};

}  // namespace

struct QtRunLoop::Impl {
    /// Receives everything queued on the main thread. Declared first: dies last.
    QObject context;
    Clock::time_point begin = Clock::now();
    QThreadPool pool;

    QTimer* startTimer(Milliseconds delay, bool isOnce, Task task) {
        auto* timer = new QTimer(&context);
        timer->setTimerType(delay < kCoarseFrom ? Qt::PreciseTimer : Qt::CoarseTimer);
        timer->setSingleShot(isOnce);
        QObject::connect(timer, &QTimer::timeout, &context, std::move(task));
        timer->start(delay);
        return timer;
    }
};

QtRunLoop::QtRunLoop() : impl_(std::make_unique<Impl>()) {
    impl_->pool.setMaxThreadCount(kBackgroundThreads);
}

QtRunLoop::~QtRunLoop() {
    impl_->pool.clear();
    impl_->pool.waitForDone();
}

Instant QtRunLoop::now() const {
    return std::chrono::duration_cast<Instant>(Clock::now() - impl_->begin);
}

void QtRunLoop::post(Task task) {
    QMetaObject::invokeMethod(&impl_->context, std::move(task), Qt::QueuedConnection);
}

void QtRunLoop::postAfter(Duration delay, Task task) {
    // Timers belong to the main thread, and the way there counts into the delay.
    post([this, due = now() + delay, task = std::move(task)]() mutable {
        QTimer* timer = impl_->startTimer(atLeast(due - now()), true, std::move(task));
        QObject::connect(timer, &QTimer::timeout, timer, &QObject::deleteLater);
    });
}

void QtRunLoop::background(Task work) { impl_->pool.start(std::move(work)); }

void QtRunLoop::backgroundAfter(Duration delay, Task work) {
    postAfter(delay, [this, work = std::move(work)] { background(work); });
}

std::unique_ptr<Timer> QtRunLoop::every(Duration interval, std::string_view, Task task) {
    return std::make_unique<TimerOwner>(
        impl_->startTimer(atLeast(interval), false, std::move(task)));
}

std::unique_ptr<Timer> QtRunLoop::after(Duration delay, Task task) {
    return std::make_unique<TimerOwner>(impl_->startTimer(atLeast(delay), true, std::move(task)));
}

std::unique_ptr<ReadableWatch> QtRunLoop::watchReadable(int fd, Task handler) {
    auto* notifier = new QSocketNotifier(fd, QSocketNotifier::Read, &impl_->context);
    QObject::connect(notifier, &QSocketNotifier::activated, &impl_->context, std::move(handler));
    return std::make_unique<WatchOwner>(notifier);
}

int QtRunLoop::run() { return QCoreApplication::exec(); }

void QtRunLoop::finishBackground() {
    constexpr int kLookMs = 5;
    impl_->pool.clear();
    while (!impl_->pool.waitForDone(kLookMs)) QCoreApplication::processEvents();
}

void QtRunLoop::quit(int status) {
    post([status] { QCoreApplication::exit(status); });
}

}  // namespace orvel::qt
