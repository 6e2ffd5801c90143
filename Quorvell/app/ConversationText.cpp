#include "Quorvell/app/ConversationText.h"

#include "QuorvellCore/text/Characters.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <ostream>
#include <utility>

namespace quorvell {

namespace {

constexpr const char* dim = "\x1b[2m";
constexpr const char* plain = "\x1b[0m";
constexpr const char* eraseLine = "\r\x1b[K";

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

void ConversationText::phaseChanged(SessionPhase phase)
{
    if (phase == SessionPhase::connecting)
        showProgress();
    else
        hideProgress();
}

void ConversationText::userSaid(const std::string& text, Words)
{
    if (m_style.speakers == Speakers::named)
        m_out << "You: " << printable(text) << std::endl;
}

void ConversationText::assistantSaid(const std::string& text)
{
    hideProgress();
    m_out << (m_style.speakers == Speakers::named ? "Quorvell: " : "") << printable(text) << std::endl;
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
    hideProgress();
    m_errors << printable(sentence) << std::endl;
}

void ConversationText::turnCompleted(TurnOutcome outcome)
{
    if (outcome == TurnOutcome::unanswered)
        problemArose("No answer came. Ask again.");
}

void ConversationText::conversationEnded(const SessionEnd& end)
{
    hideProgress();
    if (!end.sentence.empty())
        m_errors << printable(end.sentence) << std::endl;
    for (const std::string& text : end.unsent)
        m_errors << "Not sent: " << printable(text) << std::endl;
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

void ConversationText::showProgress()
{
    if (m_style.progress.empty())
        return;
    const bool isDimmed = m_style.colour == Colour::ansi;
    m_out << (isDimmed ? dim : "") << m_style.progress << (isDimmed ? plain : "") << std::flush;
    m_showsProgress = true;
}

void ConversationText::hideProgress()
{
    if (std::exchange(m_showsProgress, false))
        m_out << (m_style.colour == Colour::ansi ? eraseLine : "\n") << std::flush;
}

void ConversationText::dimmed(const std::string& line)
{
    hideProgress();
    if (m_style.colour == Colour::ansi)
        m_out << dim << "  · " << line << plain << std::endl;
    else
        m_out << "  · " << line << std::endl;
}

} // namespace quorvell
