// SPDX-License-Identifier: MIT
#include "Quorvell/session/outbox/ToolAnswers.h"

#include "Quorvell/session/turn/SessionEvents.h"
#include "QuorvellCore/live/tools/ToolResult.h"
#include "QuorvellCore/text/CodeWord.h"

#include <nlohmann/json.hpp>

namespace quorvell {

ToolAnswers::ToolAnswers(Ports ports)
    : m_ports(ports)
{
}

void ToolAnswers::give(const tool_report::Answered& answer, Conversation conversation)
{
    const auto& [call, result] = answer.answered;
    const bool isLate = answer.time == tool_report::Answered::Time::late;
    const bool isWanted = !isLate && m_ports.lines.ready() && m_ports.lines.serial() == answer.askedBy;
    m_ports.log.record("tool_answered",
        {{"name", codeWord(call.name)}, {"failed", ToolResult::of(result).isFailure()}, {"sent", isWanted}});
    m_ports.turn.noteActivity();
    const bool isToBeTold = answer.scheduling != LiveResponseScheduling::silent;
    const bool isOfThisConversation = conversation == Conversation::active && answer.askedBy >= m_firstSerial;
    if (isWanted)
        m_ports.lines.ready()->sendToolResponse({call.id, call.name, result}, answer.scheduling);
    else if (isToBeTold && isOfThisConversation && !m_ports.handover.isPending())
        // Whoever asked is gone, or was told that there is no answer. A request that is about to be handed over brings
        // its results along.
        m_ports.outbox.tell({.text = SessionEvents::lateResult(answer.answered)});
    else
        return;
    if (isToBeTold)
        m_ports.turn.resultGiven();
}

} // namespace quorvell
