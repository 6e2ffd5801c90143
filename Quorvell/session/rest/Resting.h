// SPDX-License-Identifier: MIT
// Dozing and waking within an active conversation: who listens meanwhile, what was heard, how long waking may take.
#pragma once

#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/ports/DozeListener.h"
#include "Quorvell/session/reports/Doze.h"
#include "Quorvell/session/reports/SessionAudience.h"
#include "Quorvell/session/rest/RestReport.h"
#include "Quorvell/session/settings/SessionLimits.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>

namespace quorvell {

/// Main thread; what it borrows must outlive it.
class Resting {
public:
    struct Ports {
        Scheduler& scheduler;
        DozeListener* listener; ///< Absent: it never rests.
        SessionAudience& observer;
        std::function<void(RestReport)> report;
    };

    Resting(Ports ports, SessionLimits limits);
    Resting(const Resting&) = delete;
    Resting& operator=(const Resting&) = delete;

    /// A conversation begins, awake. What failed before may work now.
    void begin();
    void doze();
    /// The conversation is wanted back; a connection is to be made, then finishWaking called. False unless it dozes.
    bool wake();
    /// Keeps what rest_report::Heard brought for finishWaking. False when it does not count: not dozing, no words.
    bool heard(const std::string& words);
    /// rest_report::Failed has come: no rest any more in this conversation. False when it does not count.
    bool failed();
    /// Connected again. What the recogniser heard, for the model; empty when something else woke it.
    std::string finishWaking();
    /// Waking did not succeed; listens once more.
    void dozeAgain();
    void end();
    /// Sound for the listener; nothing unless dozing.
    void captured(std::span<const std::uint8_t> pcm);

    Doze state() const { return m_doze; }
    bool canRest() const { return m_ports.listener && !m_dozeFailed; }
    SessionTime dozedAt() const { return m_dozedAt; }
    int dozes() const { return m_dozes; } ///< In this conversation.

private:
    void setDoze(Doze doze);
    void listen();

    Ports m_ports;
    SessionLimits m_limits;
    Doze m_doze = Doze::awake;
    bool m_dozeFailed = false;
    int m_dozes = 0;
    SessionTime m_dozedAt{};
    std::string m_heardWhileDozing;
    TimerHandle m_wakingLimit;
};

} // namespace quorvell
