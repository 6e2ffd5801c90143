// SPDX-License-Identifier: MIT
#include "Quorvell/app/conversation/ConversationText.h"

#include "Quorvell/app/conversation/ToolText.h"
#include "Quorvell/app/terminal/ShownOutput.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/ColumnText.h"
#include "QuorvellCore/text/PrintableText.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <ostream>
#include <utility>

namespace quorvell {

namespace {

const std::string asideMark = "  · ";
constexpr std::size_t markColumns = 2; ///< Of the mark without the spaces before it.

} // namespace

ConversationText::ConversationText(std::ostream& out, std::ostream& errors, Style style)
    : m_out(out)
    , m_errors(errors)
    , m_style(std::move(style))
{
}

void ConversationText::restChanged(Doze doze)
{
    if (doze == Doze::dozing)
        note("resting: nothing is sent until you speak");
    if (doze == Doze::waking)
        note("waking");
}

void ConversationText::helpModeChanged(HelpMode mode)
{
    note("mode: " + std::string(nameOf(mode)));
}

void ConversationText::userSaid(const std::string& text, Words)
{
    if (m_style.speakers == Speakers::named)
        print(m_out, "You: " + text);
}

void ConversationText::assistantSaid(const std::string& text)
{
    print(m_out, (m_style.speakers == Speakers::named ? "Quorvell: " : "") + text);
}

void ConversationText::planChanged(const TaskPlan& plan)
{
    for (std::size_t index = 0; index < plan.steps.size(); ++index)
        note((plan.steps[index].done ? "[x] " : "[ ] ") + std::to_string(index + 1) + ". "
            + printableLine(plan.steps[index].text, longestNote));
}

void ConversationText::toolCalled(const LiveFunctionCall& call)
{
    if (m_style.tools == Tools::whole)
        note(printableLine(call.name, longestNote) + "  " + dumpJson(call.args));
}

void ConversationText::toolAnswered(const LiveFunctionResponse& response)
{
    if (m_style.tools == Tools::whole)
        return note(printableLine(response.name, longestNote) + "  " + dumpJson(response.response));
    if (const auto text = ToolText::of(response))
        note(printableLine(*text, longestNote));
}

void ConversationText::problemArose(const std::string& sentence)
{
    print(m_errors, sentence);
}

void ConversationText::turnCompleted(TurnOutcome outcome)
{
    if (outcome == TurnOutcome::unanswered)
        problemArose("No answer came. Ask again.");
}

void ConversationText::conversationEnded(const SessionEnd& end)
{
    if (!end.sentence.empty())
        print(m_errors, end.sentence);
    for (const std::string& text : end.unsent)
        print(m_errors, "Not sent: " + text);
}

void ConversationText::print(std::ostream& stream, const std::string& line)
{
    printLine(stream, line, 0, Look::plain);
}

void ConversationText::note(const std::string& line)
{
    printLine(m_out, asideMark + line, markColumns, Look::faint);
}

void ConversationText::printLine(std::ostream& stream, const std::string& line, std::size_t indent, Look look)
{
    const auto colour = look == Look::faint ? m_style.colour : TerminalColour::none;
    // Nobody remembers here where a tool's name or a sentence came from.
    const std::string shown = printableText(line);
    const auto printNow = [&] {
        ShownOutput::faint(
            stream, m_style.columns ? wrappedToColumns(shown, m_style.columns(), indent) : shown, colour);
        stream << std::endl;
    };
    if (m_style.aside)
        m_style.aside(printNow);
    else
        printNow();
}

} // namespace quorvell
