// SPDX-License-Identifier: MIT
// The user's return as the desktop tells it: the computer woke up, the session was unlocked, the screen saver ended;
// and, while somebody waits, use after idleness.
#pragma once

#include "Quorvell/desktop/BusSignals.h"
#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/reminding/IdleReturn.h"
#include "Quorvell/reminding/PresenceWatch.h"

#include <QDBusConnection>
#include <QObject>

#include <memory>
#include <vector>

namespace quorvell {

/// What a desktop does not offer is done without. Main thread.
class LoginWatch final : public PresenceWatch {
public:
    static constexpr std::chrono::seconds idlePeriod{30};

    LoginWatch(const QDBusConnection& systemBus, const QDBusConnection& sessionBus, Scheduler& scheduler);
    ~LoginWatch() override;

    void onReturn(std::function<void()> cameBack) override;
    void setWaiting(bool isWaiting) override;
    /// As well after every sleep, whoever waits: alarms may have passed.
    void onWake(std::function<void()> woke) { m_woke = std::move(woke); }

private:
    void report();
    void sessionUnlocked(const QDBusMessage& signal);
    void askForIdleness();
    void askLoginForIdleness();
    void sampled(std::chrono::milliseconds idle);

    QDBusConnection m_system;
    QDBusConnection m_session;
    Scheduler& m_scheduler;
    std::function<void()> m_cameBack;
    std::function<void()> m_woke;
    IdleReturn m_idle;
    TimerHandle m_sampling;
    std::vector<std::unique_ptr<BusSignals>> m_signals;
    std::unique_ptr<QObject> m_context; ///< Owns the calls that wait; goes first.
};

} // namespace quorvell
