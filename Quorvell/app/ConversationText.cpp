#include "Quorvell/app/ConversationText.h"

#include "Quorvell/app/ChatWord.h"
#include "QuorvellCore/text/Characters.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <ostream>
#include <utility>

namespace quorvell {

namespace {

constexpr const char* dim = "\x1b[2m";
constexpr const char* plain = "\x1b[0m";

bool isControl(unsigned char byte)
{
    return (byte < 0x20 && byte != '\n' && byte != '\t') || byte == 0x7F;
}

/// U+0080 to U+009F, the other control characters, begin with this byte in UTF-8.
bool isSecondControl(unsigned char first, unsigned char second)
{
    return first == 0xC2 && second >= 0x80 && second <= 0x9F;
}

std::string valueText(const Json& value)
{
    return readString(value).value_or(dumpJson(value));
}

std::string onOneLine(std::string text)
{
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
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
        dimmed("resting: nothing is sent until you speak");
    if (doze == Doze::waking)
        dimmed("waking");
}

void ConversationText::helpModeChanged(HelpMode mode)
{
    dimmed(std::string("mode: ") + ChatWord::nameOf(mode));
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
        dimmed((plan.steps[index].done ? "[x] " : "[ ] ") + std::to_string(index + 1) + ". "
            + onOneLine(printable(plan.steps[index].text)));
}

void ConversationText::toolCalled(const LiveFunctionCall& call)
{
    dimmed(call.name + "  " + summary(call.args));
}

void ConversationText::toolAnswered(const LiveFunctionResponse& response)
{
    dimmed(response.name + "  " + summary(response.response));
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

std::string ConversationText::summary(const Json& object)
{
    std::string text;
    for (const auto& [key, value] : object.items())
        text += (text.empty() ? "" : ", ") + key + ": " + valueText(value);
    text = onOneLine(printable(text));
    return characterCount(text) <= longestNote ? text : firstCharacters(text, longestNote - 1) + "…";
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
    const auto printNow = [&] { stream << line << std::endl; };
    if (m_style.aside)
        m_style.aside(printNow);
    else
        printNow();
}

void ConversationText::dimmed(const std::string& line)
{
    const bool isColoured = m_style.colour == Colour::ansi;
    print(m_out, (isColoured ? std::string(dim) : "") + "  · " + line + (isColoured ? plain : ""));
}

} // namespace quorvell
