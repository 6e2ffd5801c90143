// SPDX-License-Identifier: MIT
// Times that were passed over because nobody can say when they are: "early tomorrow", "at lunch", and how long a rule
// lasts.
#include "QuorvellCore/reminders/request/PassedOverRules.h"
#include "QuorvellCore/reminders/wording/TimeTerms.h"

namespace quorvell {

namespace {

using Terms = WordTerms;

} // namespace

/// "early tomorrow", "late in the evening", "last thing at night", "the same time tomorrow": when is that?
int PassedOverRules::vaguely(int index) const
{
    const bool isSameTime = is(index, {"same", "this"}) && is(index + 1, {"time"})
        && (m_tokens.isTime(index + 2) || m_tokens.isTime(index - 1) || m_tokens.isTime(index - 2));
    if (m_hasClock)
        return 0;
    if (isSameTime || (is(index, {"last"}) && is(index + 1, {"thing"}) && m_tokens.isTime(index + 2)))
        return 2;
    const int next = is(index + 1, {"in", "on"}) ? (is(index + 2, {"the"}) ? index + 3 : index + 2) : index + 1;
    const bool isOfDay = m_tokens.isTime(next) && has(next, Terms::part | Terms::relativeDay | Terms::weekday);
    const bool isBehind = m_tokens.isTime(index - 1)
        && has(index - 1, Terms::relativeDay | Terms::weekday | Terms::part)
        && (isEdge(index) || is(index + 1, {"to"}));
    const bool isState = is(index - 1, {"be", "am", "is", "are", "was", "were", "been", "not", "too", "so", "very"});
    return is(index, {"early", "late", "mid"}) && !isState && (isOfDay || isBehind) ? 1 : 0;
}

/// "every day for a week": a rule has no end.
int PassedOverRules::duration(int index) const
{
    constexpr int longest = 5;
    if (!is(index, {"for"}) || !m_hasRule)
        return 0;
    for (int unit = index + 2; unit < index + longest; ++unit) {
        if (has(unit, Terms::unit) && is(unit, {"day", "days", "week", "weeks", "month", "months", "year", "years"}))
            return unit - index + 1;
        if (TimeTerms::isOrdinary(m_tokens, unit) && !is(unit, {"few", "couple"}))
            return 0;
    }
    return 0;
}

/// A time of day that no clock knows, where the clock was not named.
int PassedOverRules::mealTime(int index) const
{
    const bool isTimeOfDay = is(index + 1,
        {"lunch", "lunchtime", "dinner", "dinnertime", "breakfast", "teatime", "bedtime", "sunrise", "sunset", "dawn",
            "dusk", "sundown"});
    return !m_hasClock && m_hasDay && is(index, {"at", "around", "by", "before", "after"}) && isTimeOfDay ? 2 : 0;
}

} // namespace quorvell
