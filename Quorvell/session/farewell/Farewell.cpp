// SPDX-License-Identifier: MIT
#include "Quorvell/session/farewell/Farewell.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace quorvell {

Farewell::Farewell(Ports ports)
    : m_ports(std::move(ports))
    , m_self(std::make_shared<Farewell*>(this))
{
}

void Farewell::userSaid(const HeardUtterance& heard)
{
    m_isLeaving = false;
    m_leave.cancel();
    const std::uint64_t utterance = ++m_utterances;
    if (heard.ownWords != heard.text) // What was pasted is no goodbye of theirs, nor for others to read.
        return;
    m_ports.classify(heard.text, [self = std::weak_ptr(m_self), utterance](bool isFarewell) {
        if (const auto farewell = self.lock())
            (*farewell)->classified(utterance, isFarewell);
    });
}

void Farewell::classified(std::uint64_t utterance, bool isFarewell)
{
    if (!isFarewell || utterance != m_utterances)
        return;
    m_ports.log.record("farewell_heard", Json::object());
    m_isLeaving = true;
    if (!m_ports.isTurnOpen())
        leaveSoon();
}

/// What is still being done is waited for: its end is told in a turn of its own.
void Farewell::turnCompleted(TurnOutcome outcome)
{
    if (outcome == TurnOutcome::answered || outcome == TurnOutcome::unanswered)
        leaveSoon();
    else
        m_isLeaving = false;
}

void Farewell::leaveSoon()
{
    if (!m_isLeaving)
        return;
    m_leave = m_ports.scheduler.after(std::chrono::milliseconds::zero(), [this] {
        if (!m_isLeaving || m_ports.isTurnOpen() || m_ports.isWorking())
            return;
        m_isLeaving = false;
        m_ports.leave();
    });
}

void Farewell::ended()
{
    ++m_utterances;
    m_isLeaving = false;
    m_leave.cancel();
}

} // namespace quorvell
