// SPDX-License-Identifier: MIT
#include "Quorvell/app/conversation/WorkNote.h"

#include "Quorvell/app/conversation/ConversationText.h"
#include "Quorvell/app/conversation/ToolText.h"
#include "QuorvellCore/text/PrintableText.h"

namespace quorvell {

void WorkNote::userSaid(const std::string&, Words)
{
    m_step.clear();
    m_wait = m_scheduler.after(
        patience, [this] { m_tell("still working on it" + (m_step.empty() ? "" : ": " + m_step) + " …"); });
}

void WorkNote::thoughtChanged(const ThoughtSummary& thought)
{
    m_step = printableLine(thought.newestLine(), ConversationText::longestNote);
}

void WorkNote::toolCalled(const LiveFunctionCall& call)
{
    m_step = ToolText::running(call.name);
}

void WorkNote::assistantWordsHeard(const std::string&)
{
    m_wait.cancel();
}

void WorkNote::assistantSaid(const std::string&)
{
    m_wait.cancel();
}

void WorkNote::turnCompleted(TurnOutcome)
{
    m_wait.cancel();
}

void WorkNote::conversationEnded(const SessionEnd&)
{
    m_wait.cancel();
}

} // namespace quorvell
