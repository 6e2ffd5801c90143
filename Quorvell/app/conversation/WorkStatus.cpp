// SPDX-License-Identifier: MIT
#include "Quorvell/app/conversation/WorkStatus.h"

#include "Quorvell/app/conversation/ConversationText.h"
#include "Quorvell/app/conversation/ToolText.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/CodePoints.h"
#include "QuorvellCore/text/ColumnText.h"
#include "QuorvellCore/text/PrintableText.h"

#include <algorithm>
#include <string_view>

namespace quorvell {

namespace {

/// As many words from the end as fit a line, on one line; of a word that fits none, its end. However much comes, the
/// work is that of a line.
std::string lastWords(std::string_view before, std::string_view delta)
{
    constexpr std::size_t mostColumns = 70; // Narrower terminals cut it.
    constexpr std::size_t mostBytes = 16 * mostColumns; // Letters with several accents.
    std::string text(before);
    text += printableText(delta.substr(delta.size() - std::min(delta.size(), mostBytes)));
    std::replace(text.begin(), text.end(), '\n', ' ');
    text = repairUtf8(text.substr(text.size() - std::min(text.size(), mostBytes)));
    std::size_t columns = columnsOf(text);
    std::size_t start = 0;
    while (columns > mostColumns) {
        const std::size_t gap = text.find(' ', start);
        std::size_t next = start;
        if (gap != std::string::npos)
            next = gap + 1;
        else
            nextCodePoint(text, next);
        columns -= columnsOf(std::string_view(text).substr(start, next - start));
        start = next;
    }
    return text.substr(start);
}

} // namespace

void WorkStatus::phaseChanged(SessionPhase phase)
{
    m_isConnecting = phase == SessionPhase::connecting;
    if (phase == SessionPhase::idle)
        m_isReconnecting = false;
    tell();
}

void WorkStatus::linkChanged(Link link)
{
    m_isReconnecting = link == Link::reconnecting;
    tell();
}

void WorkStatus::userSaid(const std::string&, Words)
{
    workBegan();
}

void WorkStatus::thoughtChanged(const ThoughtSummary& thought)
{
    m_step = printableText(thought.newestLine());
}

void WorkStatus::toolCalled(const LiveFunctionCall& call)
{
    workBegan();
    m_step = ToolText::running(call.name);
    tell();
}

void WorkStatus::toolAnswered(const LiveFunctionResponse&)
{
    m_step.clear();
    tell();
}

void WorkStatus::assistantReplyGrew(const std::string& delta)
{
    m_growing = lastWords(m_growing, delta);
    tell();
}

void WorkStatus::assistantSaid(const std::string&)
{
    m_growing.clear();
    if (m_since)
        m_since = m_scheduler.now(); // A long piece of work may go on behind what was said.
    tell();
}

void WorkStatus::turnCompleted(TurnOutcome)
{
    workEnded();
}

void WorkStatus::conversationEnded(const SessionEnd&)
{
    m_isConnecting = false;
    m_isReconnecting = false;
    workEnded();
}

void WorkStatus::workBegan()
{
    if (m_since)
        return;
    m_since = m_scheduler.now();
    m_ticks = m_scheduler.every(tick, [this] { tell(); });
}

void WorkStatus::workEnded()
{
    m_since.reset();
    m_step.clear();
    m_growing.clear();
    m_ticks.cancel();
    tell();
}

void WorkStatus::tell()
{
    if (m_isReconnecting)
        return m_line.show("The connection was lost; connecting again …");
    if (m_isConnecting)
        return m_line.show("Calling the assistant …");
    if (!m_growing.empty())
        return m_line.show(m_growing + " …");
    const auto waited = m_since ? m_scheduler.now() - *m_since : SessionTime{};
    if (waited < worthTelling)
        return m_line.hide();
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(waited).count();
    m_line.show("Working" + (m_step.empty() ? std::string() : ": " + m_step) + " … " + std::to_string(seconds)
        + " s (Ctrl+C stops)");
}

} // namespace quorvell
