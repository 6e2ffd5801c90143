// SPDX-License-Identifier: MIT
#include "Quorvell/session/outbox/Handover.h"

#include <utility>

namespace quorvell {

Handover::Handover(Ports ports)
    : m_ports(ports)
{
}

void Handover::lineLost()
{
    m_untoldSince.reset();
    if (!m_ports.turn.connectionLost())
        return m_ports.outbox.forgetSent();
    m_lostRequests = m_ports.turn.conversation().openRequests();
    m_lostReplies = m_ports.turn.conversation().openReplies();
    m_ports.outbox.sendAgain();
}

void Handover::lineMended()
{
    std::string requests = std::exchange(m_lostRequests, {});
    if (!requests.empty())
        m_ports.outbox.tell(
            {.text = SessionEvents::handover(unfinished(std::move(requests), std::exchange(m_lostReplies, {})))});
    else if (m_ports.turn.isOpen())
        m_untoldSince = m_ports.turn.conversation().settledMark();
}

void Handover::tellTurnsSince(ConversationMemory::Mark known)
{
    const auto turns = m_ports.turn.conversation().settledSince(known);
    if (!turns.empty())
        m_ports.outbox.tell(
            {.text = SessionEvents::turnsMeanwhile(turns), .answer = LiveMessageText::Answer::notWanted});
}

void Handover::tellMissed()
{
    const ConversationMemory& conversation = m_ports.turn.conversation();
    m_ports.outbox.tell(
        {.text = SessionEvents::notTakenUp(unfinished(conversation.openRequests(), conversation.openReplies()))});
}

void Handover::turnClosed()
{
    m_lostRequests.clear();
    const auto untold = std::exchange(m_untoldSince, std::nullopt);
    if (untold && m_ports.outbox.isConnected())
        tellTurnsSince(*untold);
}

void Handover::forget()
{
    m_lostRequests.clear();
    m_untoldSince.reset();
}

SessionEvents::Unfinished Handover::unfinished(std::string requests, std::string heardReply) const
{
    const auto& replies = m_ports.desk.actionReplies();
    return {std::move(requests), std::move(heardReply), {replies.begin(), replies.end()}, m_ports.desk.runningCalls()};
}

} // namespace quorvell
