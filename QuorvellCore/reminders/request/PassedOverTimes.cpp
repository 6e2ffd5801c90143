// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/request/PassedOverTimes.h"

#include "QuorvellCore/reminders/request/PassedOverRules.h"
#include "QuorvellCore/reminders/wording/TimeTerms.h"

#include <algorithm>
#include <cstdint>

namespace quorvell {

namespace {

using About = PassedOverTime::About;
using Terms = WordTerms;

/// With the words that lead to it: "at the" of "at the start of each month".
int led(const RequestTokens& tokens, int index)
{
    while (tokens.isOpen(index - 1) && tokens.is(index - 1, {"on", "at", "by", "in", "the", "for", "from", "and", ","}))
        --index;
    return index;
}

/// "On 03.12.", unlike "the friday report".
bool isLedByTime(const RequestTokens& tokens, int index)
{
    const int before = tokens.is(index - 1, {"the"}) ? index - 2 : index - 1;
    return tokens.is(before, {"on", "at", "by", "until", "till", "from"});
}

/// By the first of the words from there on that tells a day from an hour.
About aboutFrom(const RequestTokens& tokens, int index)
{
    constexpr int farthest = 5;
    constexpr std::uint32_t ofDay =
        Terms::weekday | Terms::pluralWeekday | Terms::relativeDay | Terms::almostDay | Terms::month | Terms::ordinal;
    for (int near = index; near < index + farthest; ++near) {
        if (tokens.has(near, ofDay) || tokens.token(near).kind == RequestToken::Kind::ordinal
            || tokens.is(near, {"weekend", "other"}))
            return About::day;
        if (TimeTerms::clockLength(tokens, near) > 0 || tokens.has(near, Terms::part))
            return About::clock;
        if (tokens.has(near, Terms::unit))
            return About::everything;
    }
    return About::everything;
}

PassedOverTime passedOver(const RequestTokens& tokens, int first, int last, About about)
{
    const bool isLed = isLedByTime(tokens, first);
    if (about == About::everything)
        about = aboutFrom(tokens, first);
    const bool isBound = tokens.is(first, {"before", "after", "until", "till", "since", "not", "later"});
    if (isBound && first == last && tokens.isTime(last + 1)) // "before [5 pm]"
        last += std::max(TimeTerms::clockLength(tokens, last + 1), 1);
    return {about, tokens.range(isLed || tokens.isOpen(first) ? led(tokens, first) : first, last),
        !tokens.isOpen(first) && !isLed};
}

} // namespace

std::vector<PassedOverTime> passedOverTimes(const RequestTokens& tokens, const PhraseFindings& findings)
{
    const PassedOverRules rules(tokens, findings);
    std::vector<PassedOverTime> found;
    for (int index = 0; index < tokens.size();) {
        const auto [length, about] = rules.timeAt(index);
        if (length > 0)
            found.push_back(passedOver(tokens, index, std::min(index + length, tokens.size()) - 1, about));
        index += std::max(length, 1);
    }
    return found;
}

} // namespace quorvell
