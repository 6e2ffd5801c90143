// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/request/RequestTask.h"

#include "QuorvellCore/reminders/phrase/PhraseTask.h"
#include "QuorvellCore/reminders/request/RequestLeadIn.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"

namespace quorvell {

namespace {

/// `pattern` begins at the start of a text, with that word: most texts are spared the search.
std::string withoutFirst(std::string_view word, const Pattern& pattern, std::string text)
{
    const bool mayMatch = asciiLowerCased(std::string_view(text).substr(0, word.size())) == word;
    const auto match = mayMatch ? pattern.find(text) : std::nullopt;
    return match ? text.erase(match->range.start, match->range.end - match->range.start) : text;
}

} // namespace

std::string tidiedTask(const std::string& task, std::string_view lowerCasedWords)
{
    static const Pattern articleBeforeTo(R"(^the\s+(?=to\s))", Pattern::Case::insensitive);
    static const Pattern article(R"(^the\s+)", Pattern::Case::insensitive);
    static const Pattern preposition(R"(^(?:to|about|that)\s+)", Pattern::Case::insensitive);
    static const Pattern to(R"(^to\s+)", Pattern::Case::insensitive);
    // "Later to call mum", "wednesday at 1 pm for my meeting".
    static const Pattern vague(R"(^(?:later|soon|some ?time)\s+(?=to\s))", Pattern::Case::insensitive);
    static const Pattern purpose(R"(^for\s+(?=(?:the|my|our|an?|his|her|their|your)\b))", Pattern::Case::insensitive);
    // "Remind me every year on the 5th of june of the wedding".
    static const Pattern of(R"(^of\s+(?=(?:the|my|our|an?|his|her|their)\b|\S+['’]s\b))", Pattern::Case::insensitive);
    static const Pattern nothing(R"(^(?:(?:in|at|on|by|for|to|of|about|the|an?)\s*)+$)", Pattern::Case::insensitive);
    const bool lostItsNoun = lowerCasedWords.find("the day after tomorrow") != std::string_view::npos;
    std::string tidy = trimmed(withoutLeadIn(withoutPoliteWords(task) + ' '), "@");
    const bool isAsked = lowerCasedWords.find("remind") != std::string_view::npos; // Else "for" is the purpose of it.
    tidy = withoutFirst("", vague, isAsked ? withoutFirst("for", purpose, tidy) : tidy);
    const std::string withoutArticle = withoutFirst("the", lostItsNoun ? article : articleBeforeTo, tidy);
    if (withoutArticle != tidy)
        tidy = withoutLeadIn(withoutFirst("", preposition, withoutArticle));
    tidy = withoutFirst("of", of, withoutFirst("to", to, tidy)); // Of "by friday to call mum".
    constexpr std::size_t longestNothing = 16; // Bytes of words that say nothing: "in", "about the".
    static const Pattern loose(R"(\s*,(?:\s*,)*)"); // Of "eye test, specsavers, 4 december, 17:15".
    if (tidy.find(" ,") != std::string::npos || tidy.find(",,") != std::string::npos)
        tidy = loose.replaceAll(tidy, ",");
    tidy = trimmed(tidy, ",.;:-!?@");
    return tidy.size() <= longestNothing && nothing.find(tidy) ? std::string() : withUpperCaseFirst(tidy);
}

} // namespace quorvell
