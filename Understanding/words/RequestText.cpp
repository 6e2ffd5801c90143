// SPDX-License-Identifier: MIT
#include "Understanding/words/RequestText.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/TextMatch.h"
#include "Understanding/words/RequestWords.h"

#include <algorithm>
#include <array>

namespace quorvell {

namespace {

std::string withoutMatchAtStart(const Pattern& pattern, const std::string& text)
{
    const auto match = pattern.find(text);
    return match && match->range.start == 0 ? trimmed(std::string_view(text).substr(match->range.end)) : text;
}

} // namespace

std::size_t RequestText::endOf(std::string_view text)
{
    constexpr std::size_t longestEnd = 160; ///< Bytes.
    const std::size_t from = text.size() > longestEnd ? text.find(' ', text.size() - longestEnd) : 0;
    return from == std::string_view::npos ? 0 : from;
}

std::string RequestText::withoutOpening(std::string_view words)
{
    static const Pattern opening(
        // Names of assistants, by habit; without a comma behind them only before what is a request.
        "^(?:(?:(?:hey|hi|hello|okay|ok)[, ]+)?(?:alexa|siri|google|cortana|bixby|jarvis|olly|pda|computer|assistant)"
        "(?:,|(?= (?:please|pls|plz|kindly|can|could|would|will|what(?:['’]?s)?|when|where|who|how|which|why|tell|show"
        "|give|read|open|add|put|set|make|create|start|update|remind|delete|remove|cancel|clear|erase|take|turn|wake"
        "|snooze|stop|do i|is there|are there|am i|have i|list|find|check|note|write|schedule|move|i (?:need|want)"
        "|include|mark|tick|get|let|pull|bring|change)\\b))"
        "|(?:hey|hi|hello|okay|ok)[, ]+(?:alexa|siri|google|cortana|bixby|jarvis|olly|pda|computer|assistant)(?= )"
        "|(?:hey|hi|hello|okay|ok) "
        "[\\p{L}]{2,12}(?<!\\b(?:please|so|and|now|can|could|i|then|pls|plz|just|there|what|when"
        "|set|add|put|show|tell|delete|remove|cancel|create|make|schedule|list|do|is|are|remind|note|read|find|move|"
        "also))"
        "(?=,? (?:(?:can|could|would|will) (?:you|u|i|we)|please|pls|plz|i "
        "(?:need|want|would|have)|what(?:['’]?s)?|when|remind"
        "|set|add|put|show|tell|delete|remove|cancel|create|make|schedule|list|do i|is there|are there)\\b)"
        "|(?:hey|hi|hello) (?:there|you|again)|hey|hi|hello|okay|ok|so|well(?! "
        "done)|u+m+|u+h+|e+r+m*|hm+|ah|and|then|now|oh|right|alright|all "
        "right|(?:listen|look|say)(?=,)"
        "|sorry|excuse me|please|pls|plz|plse|kindly|quorvell|dear|darling|good (?:morning|afternoon|evening)(?= \\S|,)"
        "|(?:wait|hold on|hang on)(?: a (?:minute|second|moment|sec))?(?=,? (?:what|how|when|where|who|which|is|are|do"
        "|does|did|can|could|add|set|put|remind|tell|show|please)\\b)"
        "|actually|by the way|you know|i mean|let me see(?=,)"
        "|(?:can|could|would|will) (?:you|u|ya) (?:just|maybe|perhaps|possibly|kindly)"
        "|(?:would|do) you mind|would you be (?:so kind|a dear|able)(?: as)?(?: to| and)|be (?:so (?:kind|good|nice) "
        "(?:as "
        "to|and)|an? (?:dear|star|darling|love|sweetheart|gem|pal|champ|doll|hero|sport|angel|legend) and)"
        "|(?:is there )?any (?:way|chance) (?:that )?(?:you|u|i|we)(?: (?:can|could|might))?|are (?:you|u) able to"
        "|(?:is|would) it (?:be )?possible (?:for (?:you|me) )?to|it (?:would|['’]?d) be "
        "(?:great|nice|good|lovely|helpful"
        "|awesome|cool|appreciated) if (?:you|u|we) (?:can|could|would)|i (?:request|ask|beg|would request) (?:you )?to"
        "|(?:may|can|could) i (?:ask|request|get|trouble) (?:you|u) to|i(?:['’]d| would) (?:like|love|want) for you to"
        "|i(?:['’]m| am) asking you to|i hope you can|(?:see|check) if you can|btw|hiya|heya|greetings(?=,)|real quick"
        "|(?:i was wondering|i wonder) (?:if|whether) (?:you|i|we) (?:could|can|might)|is it possible to"
        "|(?:i(?:['’]d| would) (?:like|love)|i(?:['’]d| would) appreciate it|i want|i need)"
        " (?:you )?(?:to|if you (?:could|would))|i(?:['’]d| would) be (?:grateful|glad|happy|thankful|delighted) if "
        "you(?:['’]d| could| would| can)"
        "|let['’]?s|let us|go ahead and|do me a favou?r(?:,)?(?: and)?|if you (?:could|would|can|don['’]?t mind)"
        "|i think|maybe|perhaps|just(?! (?:a|one) "
        "(?:moment|minute|min|second|sec)\\b[.!]*$)|quickly|also(?=,)|(?:tell|show|remind) me(?= "
        "(?:what|when|which|whether|where|how|if)\\b)"
        "|(?:i|we)(?:['’]ve| have)(?: got)? to(?= )|i (?:must|should|ought to)(?! (?:not|remember)\\b)|(?:thanks|thank "
        "you|ta|cheers)(?: (?:for that|a lot|so much|very much|for this))?[,.](?: and| now)?(?= \\S+ \\S)|great,"
        "|(?:shoot|oops|whoops|damn|argh|ugh|oh no|oh dear|gosh|shit|right "
        "so|anyway|like|basically|also|next|first)(?=,)"
        "|like(?= (?:can|could|add|put|set|i)\\b)|do (?:one|1) thing(?=,)"
        "|do you know(?= (?:what|when|which|where|if)\\b)|what i want is to|you can(?= \\S+ \\S)|i(?:['’]m| am) "
        "sure(?: that)?|be able to|let me(?! (?:see|hear|know|have|think)\\b)"
        "|(?:can|could|would|will|might) (?:you|u|ya|we|i)(?: please| pls| plz)?)(?![\\w'’])[,.:;!?]*\\s*",
        Pattern::Case::insensitive);
    std::string text = trimmed(firstCharacters(words, longest));
    for (std::string before; before != text;) {
        before = text;
        text = withoutMatchAtStart(opening, text);
        if (text.empty())
            return before;
    }
    return text;
}

std::string RequestText::withoutClosing(std::string_view words)
{
    static const Pattern closing(
        "[\\s,.;!?]*(?:\\b(?:please|pls|plz|thx|thank u|for me|(?:many )?thanks(?: a lot| so much)?|thank you(?: very "
        "much| so "
        "much)?|cheers|ta|will you|would you|could you"
        "|can you|won['’]?t you|if you (?:can|could|would|please|don['’]?t mind|wouldn['’]?t mind|like)"
        "|when you (?:can|get a chance|have a moment)|dear|darling|love|mate|quorvell|okay|ok|all "
        "right|then))?[\\s.;!?]*$",
        Pattern::Case::insensitive);
    std::string text = trimmed(words);
    for (std::string before; before != text;) {
        before = text;
        const auto match = closing.find(text, endOf(text));
        if (match && match->range.start > 0)
            text.resize(match->range.start);
    }
    // The full stop of "5 p.m." belongs to it.
    return text.ends_with(".m") || text.ends_with(".M") ? text + "." : text;
}

std::string RequestText::withoutFillers(std::string_view words)
{
    // Small letters only: "UM" may be a name.
    static const Pattern filler("(?<=\\S)[,.]{0,3}(?: (?:u+h+m*|u+m+|e+r+m+|h+m+)(?:[,.]{1,3})?)+(?= \\S)");
    return filler.replaceAll(std::string(words), "");
}

bool RequestText::isIdle(std::string_view said)
{
    constexpr auto idle = std::to_array<std::string_view>({"i", "we", "me", "my", "am", "is", "are", "do", "does",
        "have", "has", "got", "there", "any", "anything", "something", "else", "on", "for", "the", "of", "still", "to",
        "it", "this", "that", "in", "at", "be", "will", "would", "could", "can", "should", "time", "free", "a", "an",
        "some", "with", "about", "rest", "just", "now", "please", "and", "or", "around", "sometime", "again", "might",
        "look", "looking", "spare", "first", "next", "hours", "hour", "little", "so", "far", "up", "planned", "long",
        "bit", "long", "as", "us", "get", "find", "going", "left", "doing", "you", "know", "may", "by", "more", "open",
        "due", "set", "pending", "least", "stretch", "spot", "appear", "happening", "like"});
    const RequestWords words(said);
    for (std::size_t index = 0; index < words.size(); ++index) {
        if (std::ranges::find(idle, words.at(index)) == idle.end())
            return false;
    }
    return true;
}

bool RequestText::isStory(std::string_view words)
{
    constexpr std::size_t mostBytes = 800;
    constexpr std::ptrdiff_t mostBlanks = 80;
    constexpr std::string_view blanks = " \t\r\n";
    return words.size() > mostBytes
        || std::ranges::count_if(words, [&](char letter) { return blanks.find(letter) != blanks.npos; }) > mostBlanks;
}

std::string RequestText::without(std::string_view words, const TextRange& range)
{
    constexpr std::string_view signs = ",;.";
    const std::string behind = trimmed(words.substr(range.end));
    std::string before = trimmed(words.substr(0, range.start));
    // "Exam, on friday, room 4" is left as "exam, room 4".
    const bool isSigned = !behind.empty() && signs.find(behind.front()) != signs.npos;
    if (isSigned && !before.empty())
        return trimmed(trimmed(before, ",;") + behind, ",;");
    return trimmed(before + " " + behind, ",;");
}

std::string RequestText::written(std::string_view words)
{
    static const Pattern twice("\\s*,(?:\\s*,)*");
    return withUpperCaseFirst(trimmed(twice.replaceAll(words, ","), ",;:-"));
}

std::string RequestText::phrase(std::string_view words)
{
    const RequestWords parts(words);
    std::string joined;
    for (std::size_t index = 0; index < parts.size(); ++index)
        joined += std::string(parts.at(index)) + " ";
    return TextMatch::normalized(joined);
}

} // namespace quorvell
