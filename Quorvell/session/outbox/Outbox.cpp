// SPDX-License-Identifier: MIT
#include "Quorvell/session/outbox/Outbox.h"

#include <utility>

namespace quorvell {

Outbox::Outbox(Ports ports)
    : m_ports(ports)
{
}

void Outbox::send(const LiveMessageText& message)
{
    const bool isWanted = message.answer == LiveMessageText::Answer::wanted;
    if (isConnected() && isWanted && m_unanswered.size() < mostWaiting)
        m_unanswered.push_back(message);
    if (isConnected() || message.lateness == LiveMessageText::Lateness::stillUseful)
        tell(message);
}

void Outbox::sendTyped(const std::string& text, const LiveMessageText& wrapped)
{
    if (!isConnected())
        m_waitingTyped.push_back(text);
    tell(wrapped);
}

void Outbox::tell(const LiveMessageText& message)
{
    if (isConnected())
        deliver(message);
    else
        await(message);
}

void Outbox::deliver(const LiveMessageText& message)
{
    if (message.answer == LiveMessageText::Answer::wanted) {
        if (!m_ports.turn.isOpen())
            m_ports.turn.open();
        m_ports.turn.backendStarted();
    }
    if (message.jpeg)
        m_ports.meter.imageSent();
    m_ports.lines.ready()->sendMessage(message);
}

void Outbox::await(LiveMessageText message)
{
    if (m_waiting.size() >= mostWaiting)
        return m_ports.notices.problem(
            "There is no connection yet, and too much waits for it already. Try again in a moment.");
    m_waiting.push_back(std::move(message));
}

void Outbox::deliverWaiting()
{
    m_waitingTyped.clear();
    for (const LiveMessageText& message : std::exchange(m_waiting, {}))
        deliver(message);
}

void Outbox::sendAgain()
{
    m_waiting.insert(m_waiting.begin(), m_unanswered.begin(), m_unanswered.end());
    m_unanswered.clear();
}

void Outbox::forget()
{
    m_waiting.clear();
    m_waitingTyped.clear();
    m_unanswered.clear();
}

} // namespace quorvell
