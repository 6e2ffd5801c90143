// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/request/RuleStart.h"

#include "QuorvellCore/reminders/calendar/DaySearch.h"
#include "QuorvellCore/reminders/spoken/CalendarPeriod.h"
#include "QuorvellCore/reminders/spoken/NamedDay.h"
#include "QuorvellCore/reminders/spoken/TokenReplacement.h"
#include "QuorvellCore/reminders/wording/RequestWording.h"
#include "QuorvellCore/text/Characters.h"

#include <algorithm>

namespace quorvell {

namespace {

using Terms = WordTerms;

bool isRule(const RequestTokens& tokens, int index)
{
    return tokens.has(index, Terms::pluralWeekday)
        || (tokens.isOpen(index)
            && tokens.is(index,
                {"every", "each", "daily", "weekly", "monthly", "yearly", "annually", "nightly", "weekdays",
                    "fortnightly", "everyday"}));
}

/// The day that the words from `index` on begin with: a day, or the first one of a week, a month or a year.
std::optional<NamedDay> firstDayAt(const RequestTokens& tokens, int index, LocalDay today)
{
    constexpr int monday = 2;
    if (tokens.is(index, {"next"}) && tokens.is(index + 1, {"week"}))
        return NamedDay{weekdayOfNextWeek(today, monday), index + 2};
    if (tokens.is(index, {"now"}))
        return NamedDay{today, index + 1};
    if (auto day = NamedDay::at(tokens, index, today))
        return day;
    const auto period = CalendarPeriod::at(tokens, index, today);
    return period ? std::optional(NamedDay{std::max(period->firstDay(), today), period->end}) : std::nullopt;
}

/// "starting from", "from ... on", "as of"; 0 for none, else the token behind it.
int behindLead(const RequestTokens& tokens, int index)
{
    if (tokens.is(index, {"starting", "beginning", "commencing", "effective", "begins", "starts", "start"}))
        return tokens.is(index + 1, {"from", "on", "in", "with"}) ? index + 2 : index + 1;
    const bool isAsOf = tokens.is(index, {"as"}) && tokens.is(index + 1, {"of", "from"});
    return isAsOf ? index + 2 : tokens.is(index, {"from"}) ? index + 1 : 0;
}

} // namespace

std::optional<RuleStart> RuleStart::find(std::string_view words, Instant now, const Calendar& calendar)
{
    constexpr std::size_t longest = 400; // Bytes; longer requests are hardly said.
    if (words.size() > longest)
        return std::nullopt;
    RequestWording wording{std::string(words)};
    RequestTokens& tokens = wording.tokens();
    tokens.markQuotes();
    bool comesBack = false;
    bool hasRelativeDay = false;
    for (int index = 0; index < tokens.size(); ++index) {
        comesBack = comesBack || isRule(tokens, index);
        hasRelativeDay = hasRelativeDay || tokens.has(index, Terms::relativeDay);
    }
    for (int index = 0; comesBack && index < tokens.size(); ++index) {
        const int lead = tokens.isOpen(index) ? behindLead(tokens, index) : 0;
        const auto day = lead > 0 ? firstDayAt(tokens, lead, calendar.day(now)) : std::nullopt;
        if (!day)
            continue;
        const bool goesOn = tokens.is(day->end, {"on", "onward", "onwards"});
        // "From monday to friday" has an end, and "every day from 5 december" would rather be a stretch.
        const bool isBareFrom = lead == index + 1 && tokens.is(index, {"from"}) && !goesOn;
        if (isBareFrom || tokens.is(day->end, {"to", "till", "until", "through", "-"}))
            continue;
        // "Tomorrow" beside it is one of today, and would move along.
        if (hasRelativeDay && !tokens.has(lead, Terms::relativeDay))
            return std::nullopt;
        const int first = tokens.is(index - 1, {","}) ? index - 1 : index;
        const auto rest = TokenReplacement::apply(wording, {{first, goesOn ? day->end + 1 : day->end, ""}});
        const Instant start = calendar.instant(day->day, std::chrono::milliseconds(0));
        return RuleStart{trimmed(*rest), std::max(now, start - std::chrono::minutes(1))};
    }
    return std::nullopt;
}

} // namespace quorvell
