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
    const std::vector<LiveMessageText> messages = std::exchange(m_waiting, {});
    const auto repeatsEnd = messages.begin() + static_cast<std::ptrdiff_t>(std::exchange(m_repeats, 0));
    m_sentAgain.insert(m_sentAgain.end(), messages.begin(), repeatsEnd);
    for (const LiveMessageText& message : messages)
        deliver(message);
}

void Outbox::sendAgain()
{
    for (const LiveMessageText& message : std::exchange(m_sentAgain, {}))
        tellOnDevice(message);
    m_waiting.insert(m_waiting.begin(), m_unanswered.begin(), m_unanswered.end());
    m_repeats += m_unanswered.size();
    m_unanswered.clear();
}

void Outbox::tellOnDevice(const LiveMessageText& message)
{
    for (const std::string& sentence : message.sentences)
        m_ports.notices.announce(sentence);
    if (message.sentences.empty())
        m_ports.notices.problem("The connection was lost twice, and something that the program had for the assistant "
                                "with it. Ask again for what you miss.");
}

void Outbox::forgetSent()
{
    m_unanswered.clear();
    m_sentAgain.clear();
}

void Outbox::forget()
{
    m_waiting.clear();
    m_repeats = 0;
    m_waitingTyped.clear();
    forgetSent();
}

} // namespace quorvell
