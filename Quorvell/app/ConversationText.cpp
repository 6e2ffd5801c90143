#include "Quorvell/app/ConversationText.h"

#include "Quorvell/app/ChatWord.h"
#include "Quorvell/app/ToolText.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/ColumnText.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <ostream>
#include <utility>

namespace quorvell {

namespace {

const std::string asideMark = "  · ";
constexpr std::size_t markColumns = 2; ///< Of the mark without the spaces before it.

bool isControl(unsigned char byte)
{
    return (byte < 0x20 && byte != '\n' && byte != '\t') || byte == 0x7F;
}

/// U+0080 to U+009F, the other control characters, begin with this byte in UTF-8.
bool isSecondControl(unsigned char first, unsigned char second)
{
    return first == 0xC2 && second >= 0x80 && second <= 0x9F;
}

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
    note(std::string("mode: ") + ChatWord::nameOf(mode));
}

void ConversationText::userSaid(const std::string& text, Words)
{
    if (m_style.speakers == Speakers::named)
        print(m_out, "You: " + printable(text));
}

void ConversationText::assistantSaid(const std::string& text)
{
    print(m_out, (m_style.speakers == Speakers::named ? "Quorvell: " : "") + printable(text));
}

void ConversationText::planChanged(const TaskPlan& plan)
{
    for (std::size_t index = 0; index < plan.steps.size(); ++index)
        note((plan.steps[index].done ? "[x] " : "[ ] ") + std::to_string(index + 1) + ". "
            + oneLine(plan.steps[index].text));
}

void ConversationText::toolCalled(const LiveFunctionCall& call)
{
    if (m_style.tools == Tools::whole)
        note(call.name + "  " + printable(dumpJson(call.args)));
}

void ConversationText::toolAnswered(const LiveFunctionResponse& response)
{
    if (m_style.tools == Tools::whole)
        return note(response.name + "  " + printable(dumpJson(response.response)));
    if (const auto text = ToolText::of(response))
        note(oneLine(*text));
}

void ConversationText::problemArose(const std::string& sentence)
{
    print(m_errors, printable(sentence));
}

void ConversationText::turnCompleted(TurnOutcome outcome)
{
    if (outcome == TurnOutcome::unanswered)
        problemArose("No answer came. Ask again.");
}

void ConversationText::conversationEnded(const SessionEnd& end)
{
    if (!end.sentence.empty())
        print(m_errors, printable(end.sentence));
    for (const std::string& text : end.unsent)
        print(m_errors, "Not sent: " + printable(text));
}

std::string ConversationText::oneLine(std::string_view text)
{
    std::string line = printable(text);
    std::replace(line.begin(), line.end(), '\n', ' ');
    return characterCount(line) <= longestNote ? line : firstCharacters(line, longestNote - 1) + "…";
}

std::string ConversationText::printable(std::string_view text)
{
    const std::string repaired = repairUtf8(text);
    std::string kept;
    kept.reserve(repaired.size());
    for (std::size_t index = 0; index < repaired.size(); ++index) {
        const auto byte = static_cast<unsigned char>(repaired[index]);
        const auto next = index + 1 < repaired.size() ? static_cast<unsigned char>(repaired[index + 1]) : 0;
        if (isSecondControl(byte, static_cast<unsigned char>(next)))
            ++index;
        else if (!isControl(byte))
            kept += repaired[index];
    }
    return kept;
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
    const auto printNow = [&] {
        stream << faint(m_style.columns ? wrappedToColumns(line, m_style.columns(), indent) : line, colour)
               << std::endl;
    };
    if (m_style.aside)
        m_style.aside(printNow);
    else
        printNow();
}

} // namespace quorvell
