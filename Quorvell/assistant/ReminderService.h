// SPDX-License-Identifier: MIT
// Lets a program fire reminders and ring alarms for as long as it owns the notebook.
#pragma once

#include "Quorvell/assistant/RingingSound.h"
#include "Quorvell/desktop/BusSignals.h"
#include "Quorvell/desktop/DesktopNotifier.h"
#include "Quorvell/desktop/LoginWatch.h"
#include "Quorvell/desktop/TimerFdWallClock.h"
#include "Quorvell/loop/EventLog.h"
#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/notebook/Notebook.h"
#include "Quorvell/reminding/ReminderWatch.h"
#include "Quorvell/settings/ProgramEnvironment.h"

#include <functional>
#include <memory>
#include <string>

namespace quorvell {

/// Every program that may own it holds one. Main thread, with an event loop.
class ReminderService {
public:
    struct Voices {
        std::function<void(const std::string& sentence)> announce; ///< Where somebody listens; may be empty.
        std::function<void()> couldNotShow; ///< May be empty.
        /// The session bus ended: from now on nothing shows on the desktop. May be empty.
        std::function<void()> desktopLost = nullptr;
        /// Something rings and cannot be heard. May be empty.
        std::function<void()> couldNotSound = nullptr;
        AlarmSound* sound = nullptr; ///< Borrowed; without it there is one of its own.
        std::string loudspeaker{}; ///< For that one; empty for the desktop's default.
    };

    /// All but the environment are borrowed and outlive it.
    ReminderService(
        const ProgramEnvironment& environment, Notebook& notebook, Scheduler& scheduler, EventLog& log, Voices voices);
    ~ReminderService();
    ReminderService(const ReminderService&) = delete;
    ReminderService& operator=(const ReminderService&) = delete;

private:
    /// Connections of its own, which end with it.
    struct Buses {
        Buses();
        ~Buses();
        QString sessionName;
        QString systemName;
    };

    Buses m_buses;
    TimerFdWallClock m_clock;
    std::unique_ptr<RingingSound> m_ownSound;
    DesktopNotifier m_notifier;
    BusSignals m_busEnd;
    LoginWatch m_presence;
    ReminderWatch m_watch;
    std::shared_ptr<bool> m_life = std::make_shared<bool>(true);
};

} // namespace quorvell
