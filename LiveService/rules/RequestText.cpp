#include "LiveService/rules/RequestText.h"

#include "OnDeviceSpeech/SpokenToWritten.h"
#include "QuorvellCore/reminders/SpokenTimes.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "QuorvellCore/text/TextMatch.h"

#include <algorithm>

namespace quorvell {

namespace {

std::string withoutMatchAtStart(const Pattern& pattern, const std::string& text)
{
    const auto match = pattern.find(text);
    return match && match->range.start == 0 ? trimmed(std::string_view(text).substr(match->range.end)) : text;
}

} // namespace

std::string RequestText::withoutOpening(std::string_view words)
{
    static const Pattern name(
        "^(?:(?:hey|hi|hello|okay|ok|so|well|um+|uh+|er+|and|now)\\b[,.!]?\\s*)*(?:quorvell\\b[,.:!]?\\s*)?"
        "(?:(?:and|so|um+|uh+)\\b[,]?\\s*)*",
        Pattern::Case::insensitive);
    static const Pattern polite(
        "^(?:please[,]?\\s+)?(?:(?:can|could|would|will)\\s+you\\s+(?:just\\s+)?|i\\s+want\\s+you\\s+to\\s+"
        "|i(?:'d|’d|\\s+would)\\s+like\\s+you\\s+to\\s+|i(?:'d|’d|\\s+would)\\s+like\\s+to\\s+(?=be\\s+reminded|have))?"
        "(?:please\\s+)?(?:(?:tell|show)\\s+me\\s+(?=what|when|which|whether))?",
        Pattern::Case::insensitive);
    return withoutMatchAtStart(polite, withoutMatchAtStart(name, trimmed(firstCharacters(words, longest))));
}

std::string RequestText::withoutClosing(std::string_view words)
{
    static const Pattern closing("[\\s,.;!?]*(?:\\b(?:please|for me|thanks|thank you|will you|would you))?[\\s.;!?]*$",
        Pattern::Case::insensitive);
    std::string text = trimmed(words);
    const auto match = closing.find(text);
    if (match && match->range.start > 0)
        text.resize(match->range.start);
    // The full stop of "5 p.m." belongs to it.
    return text.ends_with(".m") || text.ends_with(".M") ? text + "." : text;
}

std::string RequestText::withDigits(std::string_view words)
{
    return withWrittenTimes(spokenToWritten(words));
}

std::string RequestText::written(std::string_view words)
{
    return withUpperCaseFirst(trimmed(words, ",;:-"));
}

std::string RequestText::phrase(std::string_view words)
{
    std::string result = TextMatch::normalized(words);
    std::erase(result, '\'');
    return result;
}

} // namespace quorvell
