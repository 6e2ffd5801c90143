// SPDX-License-Identifier: MIT
#include "Quorvell/desktop/TimerFdWallClock.h"

#include <sys/timerfd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <ctime>
#include <utility>

namespace quorvell {

TimerFdWallClock::TimerFdWallClock()
    : m_timer(::timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC))
{
    if (m_timer < 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(m_timer, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { ring(); });
}

TimerFdWallClock::~TimerFdWallClock()
{
    m_notifier.reset();
    if (m_timer >= 0)
        ::close(m_timer);
}

Instant TimerFdWallClock::now() const
{
    return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
}

void TimerFdWallClock::setAlarm(std::optional<Instant> moment)
{
    itimerspec alarm{};
    if (moment) {
        const auto sinceEpoch = std::max(moment->time_since_epoch(), std::chrono::milliseconds(1));
        const auto seconds = std::chrono::floor<std::chrono::seconds>(sinceEpoch);
        alarm.it_value.tv_sec = static_cast<time_t>(seconds.count());
        alarm.it_value.tv_nsec =
            static_cast<long>(std::chrono::nanoseconds(sinceEpoch - seconds).count()); // all zero would disarm it
    }
    ::timerfd_settime(m_timer, TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &alarm, nullptr);
}

void TimerFdWallClock::onRing(std::function<void()> rang)
{
    m_rang = std::move(rang);
}

/// A clock that was set makes the read fail; then the alarm has to be looked at again, too.
void TimerFdWallClock::ring()
{
    std::uint64_t times = 0;
    [[maybe_unused]] const auto taken = ::read(m_timer, &times, sizeof times);
    if (m_rang)
        m_rang();
}

} // namespace quorvell
