// SPDX-License-Identifier: MIT
#include "Quorvell/actions/tasks/WorkPermit.h"

#include <algorithm>
#include <utility>

namespace quorvell {

WorkPermit::WorkPermit(Scheduler& scheduler, ActionExecutionGate& gate, std::chrono::milliseconds longestWork,
    std::function<void()> lost, std::function<void()> timeIsUp)
    : m_scheduler(scheduler)
    , m_gate(gate)
    , m_timeLeft(longestWork)
    , m_lost(std::move(lost))
    , m_timeIsUp(std::move(timeIsUp))
{
}

WorkPermit::~WorkPermit()
{
    giveBack();
}

bool WorkPermit::take(const std::string& callID)
{
    m_ticket = m_gate.begin(callID);
    if (!m_ticket)
        return false;
    m_since = m_scheduler.now();
    m_deadline = m_scheduler.after(m_timeLeft, m_timeIsUp);
    m_watch = m_scheduler.every(watchPeriod, [this] { watch(); });
    return true;
}

void WorkPermit::giveBack()
{
    m_deadline.cancel();
    m_watch.cancel();
    const auto ticket = std::exchange(m_ticket, std::nullopt);
    if (!ticket)
        return;
    m_gate.finish(*ticket);
    m_timeLeft -= std::min(m_timeLeft, m_scheduler.now() - m_since);
}

void WorkPermit::stopAction()
{
    if (m_ticket)
        m_ticket->cancellation->cancel();
}

void WorkPermit::watch()
{
    if (m_gate.isCurrent(*m_ticket))
        return;
    m_watch.cancel();
    const auto lost = m_lost; // It may be the end of this.
    lost();
}

} // namespace quorvell
