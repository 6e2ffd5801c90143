// SPDX-License-Identifier: MIT
#include "Understanding/dialogue/SeriesWords.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/time/TimeVocabulary.h"
#include "Understanding/words/RequestText.h"

namespace quorvell {

namespace {

using Scope = Wish::Scope;

/// Nothing changes where the pattern is not found.
bool take(const Pattern& pattern, std::string& words)
{
    const auto match = pattern.find(words);
    if (!match)
        return false;
    words = RequestText::without(words, match->range);
    return true;
}

} // namespace

SeriesWords SeriesWords::read(std::string_view words)
{
    static const Pattern series(
        "\\b(?:(?:every|each) (?:time|week|month|year|day)|(?:every|each)(?: (?:single|one of))?"
        "|(?:the |my |our )?(?:(?:whole|entire|complete)(?! day)(?: series)?|series)(?: of)?"
        "|always|for good|from now on|for ever)\\b(?: (?:the|my|our)\\b)?",
        Pattern::caseless);
    static const Pattern one("\\b(?:only|just)\\b", Pattern::caseless);
    SeriesWords read{.scope = Scope::open, .rest = std::string(words)};
    while (take(series, read.rest))
        read.scope = Scope::all;
    if (take(one, read.rest) && read.scope == Scope::open)
        read.scope = Scope::one;
    return read;
}

Scope SeriesWords::answer(std::string_view words)
{
    static const Pattern all("\\b(?:all|every|everything|each|always|series|whole|both)\\b", Pattern::caseless);
    static const Pattern one("\\b(?:only|just|one|once|single|first|next|this|that|today|tomorrow|"
            + std::string(TimeVocabulary::weekday) + ")\\b",
        Pattern::caseless);
    if (all.find(words))
        return Scope::all;
    return one.find(words) ? Scope::one : Scope::open;
}

} // namespace quorvell
