// SPDX-License-Identifier: MIT
#include "Quorvell/desktop/QtScheduler.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <ctime>
#include <utility>

namespace quorvell {

QtScheduler::QtScheduler()
    : m_context(std::make_unique<QObject>())
{
}

QtScheduler::~QtScheduler() = default;

SessionTime QtScheduler::now() const
{
    timespec time{};
    clock_gettime(CLOCK_BOOTTIME, &time);
    return std::chrono::duration_cast<SessionTime>(
        std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec));
}

Instant QtScheduler::wallClock() const
{
    return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
}

TimerHandle QtScheduler::after(std::chrono::milliseconds delay, std::function<void()> action)
{
    return startTimer(delay, Repeat::no, std::move(action));
}

TimerHandle QtScheduler::every(std::chrono::milliseconds period, std::function<void()> action)
{
    return startTimer(period, Repeat::yes, std::move(action));
}

void QtScheduler::post(std::function<void()> action)
{
    QMetaObject::invokeMethod(m_context.get(), std::move(action), Qt::QueuedConnection);
}

TimerHandle QtScheduler::startTimer(std::chrono::milliseconds interval, Repeat repeat, std::function<void()> action)
{
    auto* timer = new QTimer(m_context.get());
    timer->setTimerType(Qt::PreciseTimer);
    timer->setSingleShot(repeat == Repeat::no);
    QObject::connect(timer, &QTimer::timeout, m_context.get(), [timer, repeat, action = std::move(action)] {
        if (repeat == Repeat::no)
            timer->deleteLater();
        action();
    });
    timer->start(std::max(interval, std::chrono::milliseconds::zero()));
    // A timer may be cancelled by its own action, so it is only ever deleted later.
    return TimerHandle([guard = QPointer<QTimer>(timer)] {
        if (guard) {
            guard->stop();
            guard->deleteLater();
        }
    });
}

} // namespace quorvell
