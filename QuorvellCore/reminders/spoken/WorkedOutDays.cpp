// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/spoken/WorkedOutDays.h"

#include "QuorvellCore/reminders/calendar/DaySearch.h"
#include "QuorvellCore/reminders/spoken/CalendarPeriod.h"
#include "QuorvellCore/reminders/spoken/NamedDay.h"
#include "QuorvellCore/reminders/spoken/TokenNumber.h"
#include "QuorvellCore/reminders/spoken/TokenReplacement.h"
#include "QuorvellCore/reminders/wording/TimeTerms.h"

#include <array>
#include <cstdio>

namespace quorvell {

namespace {

using Kind = RequestToken::Kind;
using Terms = WordTerms;
using std::chrono::days;

constexpr int daysInWeek = 7;
constexpr int farthest = 1000; ///< Of days, weeks or months; nobody means more.

/// What some words from one token on come to.
struct WorkedOut {
    LocalDay day{};
    int end = 0; ///< The token behind them.
};

using Worked = std::optional<WorkedOut>;

/// So many days or months; one of them is 0.
struct Distance {
    int days = 0;
    int months = 0;
    int end = 0;
};

std::string writtenDay(LocalDay day)
{
    const std::chrono::year_month_day date(day);
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "on %04d-%02u-%02u", static_cast<int>(date.year()),
        static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
    return text.data();
}

class WorkedOutDays {
public:
    WorkedOutDays(const RequestTokens& tokens, LocalDay today)
        : m_tokens(tokens)
        , m_today(today)
    {
        for (int index = 0; index < tokens.size() && !m_hasRule; ++index)
            m_hasRule = is(index, {"every", "each", "daily", "weekly", "monthly", "yearly", "annually"});
    }

    std::vector<TokenReplacement> find() const
    {
        std::vector<TokenReplacement> found;
        for (int index = 0; index < m_tokens.size();) {
            const bool isOfRule = is(index - 1, {"every", "each", "of"}) && !is(index - 2, {"me"});
            const auto day = isOfRule || !m_tokens.isOpen(index) ? std::nullopt : at(index);
            if (!day) {
                ++index;
                continue;
            }
            const int end = found.empty() ? 0 : found.back().end;
            const bool isLed = index - 1 >= end && is(index - 1, {"on", "at", "by", "in", "after"});
            found.push_back({isLed ? index - 1 : index, day->end, writtenDay(day->day)});
            index = day->end;
        }
        return found;
    }

private:
    Worked at(int index) const
    {
        for (const auto rule : {&WorkedOutDays::weekdayOfPeriod, &WorkedOutDays::edgeOfPeriod,
                 &WorkedOutDays::distanceFromDay, &WorkedOutDays::weeksOn, &WorkedOutDays::months,
                 &WorkedOutDays::dayOfPeriod, &WorkedOutDays::dateOfYear, &WorkedOutDays::weekdayOfWeek,
                 &WorkedOutDays::feast, &WorkedOutDays::figures})
            if (auto day = (this->*rule)(index))
                return day;
        return std::nullopt;
    }

    bool is(int index, RequestTokens::Words words) const { return m_tokens.is(index, words); }
    bool has(int index, std::uint32_t anyOf) const { return m_tokens.has(index, anyOf); }
    std::optional<int> weekdayAt(int index) const { return m_tokens.token(index).terms.valueOf(Terms::weekday); }

    /// What stands there goes on with a time or with the request, not with a name that the day belongs to.
    bool mayFollow(int index) const
    {
        return !m_tokens.isInside(index) || m_tokens.token(index).kind == Kind::mark
            || !TimeTerms::isOrdinary(m_tokens, index);
    }

    /// The time stands in front of the request, so that any word may follow it.
    bool isFirst(int index) const { return (is(index - 1, {"on", "by"}) ? index - 1 : index) <= m_tokens.start(); }

    /// "the first monday of may", "the last day of next month".
    Worked weekdayOfPeriod(int index) const
    {
        constexpr int mostWeeks = 5;
        const int first = is(index, {"the"}) ? index + 1 : index;
        const bool isLast = is(first, {"last"});
        const auto place = isLast ? std::optional(TokenNumber{0, first + 1}) : TokenNumber::ordinal(m_tokens, first);
        if (m_hasRule || !place || place->value > mostWeeks || !is(place->end + 1, {"of", "in"}))
            return std::nullopt;
        const auto weekday = weekdayAt(place->end);
        const bool isDay = is(place->end, {"day"}) && (isLast || place->value == 1);
        auto period = weekday || isDay ? CalendarPeriod::at(m_tokens, place->end + 2, m_today) : std::nullopt;
        if (!period || (weekday && period->months > 1))
            return std::nullopt;
        const auto dayIn = [&](const CalendarPeriod& of) {
            return !weekday ? std::optional(isLast ? of.lastDay() : of.firstDay())
                : isLast    ? lastWeekday(of, *weekday)
                            : nthWeekday(of, *weekday, place->value);
        };
        auto day = dayIn(*period);
        if ((!day || *day < m_today) && period->monthsToNext > 0)
            day = dayIn(period->next());
        return day ? Worked(WorkedOut{*day, period->end}) : std::nullopt;
    }

    static std::optional<LocalDay> nthWeekday(const CalendarPeriod& month, int weekday, int place)
    {
        const LocalDay first = month.firstDay();
        const int step = (weekday - Calendar::weekday(first) + daysInWeek) % daysInWeek;
        const LocalDay day = first + days(step + daysInWeek * (place - 1));
        return day <= month.lastDay() ? std::optional(day) : std::nullopt;
    }

    static LocalDay lastWeekday(const CalendarPeriod& month, int weekday)
    {
        const LocalDay last = month.lastDay();
        return last - days((Calendar::weekday(last) - weekday + daysInWeek) % daysInWeek);
    }

    /// "the end of the month", "the start of next year". The end of a week is Friday for some and Sunday for others.
    Worked edgeOfPeriod(int index) const
    {
        const int edge = is(index, {"the"}) ? index + 1 : index;
        const bool isEnd = is(edge, {"end"});
        if (m_hasRule || (!isEnd && !is(edge, {"start", "beginning"})) || !is(edge + 1, {"of"}))
            return std::nullopt;
        const auto period = CalendarPeriod::at(m_tokens, edge + 2, m_today);
        if (!period)
            return std::nullopt;
        const bool isOver = (isEnd ? period->lastDay() : period->firstDay()) < m_today;
        const CalendarPeriod meant = isOver && period->monthsToNext > 0 ? period->next() : *period;
        return WorkedOut{isEnd ? meant.lastDay() : meant.firstDay(), period->end};
    }

    /// "two weeks", "a couple of days", "6 months".
    std::optional<Distance> distance(int index) const
    {
        const bool isCouple = is(index, {"a"}) && is(index + 1, {"couple"}) && is(index + 2, {"of"});
        const auto count = isCouple ? std::optional(TokenNumber{2, index + 3}) : TokenNumber::cardinal(m_tokens, index);
        if (!count || count->value == 0 || count->value > farthest)
            return std::nullopt;
        const int end = count->end + 1;
        if (is(count->end, {"day", "days"}))
            return Distance{count->value, 0, end};
        if (is(count->end, {"week", "weeks"}))
            return Distance{daysInWeek * count->value, 0, end};
        if (is(count->end, {"fortnight", "fortnights"}))
            return Distance{2 * daysInWeek * count->value, 0, end};
        if (is(count->end, {"month", "months"}))
            return Distance{0, count->value, end};
        return is(count->end, {"year", "years"})
            ? std::optional(Distance{0, CalendarPeriod::monthsOfYear * count->value, end})
            : std::nullopt;
    }

    static LocalDay moved(LocalDay day, const Distance& by, int sign)
    {
        return CalendarPeriod::adding(day, sign * by.months) + days(sign * by.days);
    }

    /// "two weeks from friday", "a month after the 5th", "the day before christmas eve".
    Worked distanceFromDay(int index) const
    {
        const int first = is(index, {"in", "the"}) ? index + 1 : index;
        const bool isNextDay = is(index, {"the"}) && is(first, {"day"});
        const auto by = isNextDay ? std::optional(Distance{1, 0, first + 1}) : distance(first);
        if (!by || !is(by->end, {"from", "after", "before"}))
            return std::nullopt;
        const auto from = NamedDay::at(m_tokens, by->end + 1, m_today);
        const bool isOfFeast = from && NamedDay::feast(m_tokens, by->end + 1, m_today); // "before the christmas party".
        if (!from || (isOfFeast && first > m_tokens.start() + 1 && !mayFollow(from->end)))
            return std::nullopt;
        return WorkedOut{moved(from->day, *by, is(by->end, {"before"}) ? -1 : 1), from->end};
    }

    /// "a week on friday", "two weeks tomorrow"; "friday week", "tomorrow fortnight".
    Worked weeksOn(int index) const
    {
        const bool isLasting = is(index - 1, {"for", "another", "the", "next"});
        const auto by = distance(index);
        if (by && by->months == 0 && is(by->end - 1, {"week", "weeks", "fortnight"}) && !isLasting) {
            const bool isNamed = is(by->end, {"on", "today", "tomorrow"}) || weekdayAt(by->end);
            const auto from = isNamed ? NamedDay::at(m_tokens, by->end, m_today) : std::nullopt;
            const bool isDay = from && from->end <= by->end + 2; // No date: "a week on the 5th" is nothing anyone says.
            return isDay && (mayFollow(from->end) || isFirst(index))
                ? Worked(WorkedOut{from->day + days(by->days), from->end})
                : std::nullopt;
        }
        const bool isDay = is(index, {"today", "tomorrow"}) || weekdayAt(index);
        const int weeks = is(index + 1, {"week"}) ? 1 : is(index + 1, {"fortnight"}) ? 2 : 0;
        const auto from = isDay && weeks > 0 ? NamedDay::at(m_tokens, index, m_today) : std::nullopt;
        const bool isOther = is(index - 1, {"the", "a", "this", "next", "last", "my", "our"});
        return from && !isOther && (mayFollow(index + 2) || isFirst(index))
            ? Worked(WorkedOut{from->day + days(daysInWeek * weeks), index + 2})
            : std::nullopt;
    }

    /// "in two months", "6 months from now", "after a month".
    Worked months(int index) const
    {
        const bool isIn = is(index, {"in"});
        const auto by = distance(isIn ? index + 1 : index);
        if (!by || by->months == 0)
            return std::nullopt;
        const int time = is(by->end, {"'", "’"}) ? by->end + 1 : by->end;
        const bool isFromNow = is(time, {"from"}) && is(time + 1, {"now"});
        const int end = isFromNow ? time + 2 : is(time, {"time"}) ? time + 1 : by->end;
        const bool isAfter = is(index - 1, {"after"}) && (!m_tokens.isInside(end) || is(end, {"to", ",", "."}));
        const bool isMeant = (isIn || isFromNow || isAfter) && !is(end, {"or", "and", "before", "after"});
        return isMeant ? Worked(WorkedOut{moved(m_today, *by, 1), end}) : std::nullopt;
    }

    /// "the 5th of next month", "next month on the 5th", "the 14th of this month".
    Worked dayOfPeriod(int index) const
    {
        const int first = is(index, {"the"}) ? index + 1 : index;
        if (const auto day = TokenNumber::ordinal(m_tokens, first); day && is(day->end, {"of"})) {
            const auto period =
                has(day->end + 1, Terms::month) ? std::nullopt : CalendarPeriod::at(m_tokens, day->end + 1, m_today);
            return period && period->months == 1 ? dayIn(*period, day->value, period->end) : std::nullopt;
        }
        if (!is(index, {"next", "this"}) || !is(index + 1, {"month"}))
            return std::nullopt;
        const auto period = CalendarPeriod::at(m_tokens, index, m_today);
        int next = index + 2;
        while (is(next, {",", "on", "the"}))
            ++next;
        const auto day = next > index + 2 && period ? TokenNumber::ordinal(m_tokens, next) : std::nullopt;
        return day ? dayIn(*period, day->value, day->end) : std::nullopt;
    }

    Worked dayIn(const CalendarPeriod& period, int day, int end) const
    {
        const auto in = [&](const CalendarPeriod& of) {
            return Calendar::dayOf(
                static_cast<int>(of.month.year()), static_cast<int>(static_cast<unsigned>(of.month.month())), day);
        };
        auto found = in(period);
        if (found && *found < m_today && period.monthsToNext > 0)
            found = in(period.next());
        return found ? Worked(WorkedOut{*found, end}) : std::nullopt;
    }

    /// "march 5 next year", "next year on the 5th of march".
    Worked dateOfYear(int index) const
    {
        const auto year = [&](int at) { return is(at, {"next", "this"}) && is(at + 1, {"year"}); };
        const auto ofYear = [&](const NamedDay& date, int at, int end) -> Worked {
            const std::chrono::year_month_day day(date.day);
            const auto named =
                Calendar::dayOf(static_cast<int>(CalendarPeriod::of(m_today).year()) + (is(at, {"next"}) ? 1 : 0),
                    static_cast<int>(static_cast<unsigned>(day.month())),
                    static_cast<int>(static_cast<unsigned>(day.day())));
            return named ? Worked(WorkedOut{*named, end}) : std::nullopt;
        };
        if (year(index)) {
            int next = index + 2;
            while (is(next, {",", "on", "the"}))
                ++next;
            const auto date = NamedDay::date(m_tokens, next, m_today);
            return date ? ofYear(*date, index, date->end) : std::nullopt;
        }
        const int first = is(index, {"the"}) ? index + 1 : index;
        const auto date = has(first, Terms::month) || m_tokens.token(first).kind != Kind::word
            ? NamedDay::date(m_tokens, first, m_today)
            : std::nullopt;
        return date && year(date->end) ? ofYear(*date, date->end, date->end + 2) : std::nullopt;
    }

    /// "friday of next week", "this week on friday", "friday after next", "this coming friday".
    Worked weekdayOfWeek(int index) const
    {
        const auto ofWeek = [&](int weekday, int weeks) {
            return weekdayOfNextWeek(m_today, weekday) + days(daysInWeek * (weeks - 1));
        };
        if (const auto weekday = weekdayAt(index)) {
            const int of = is(index + 1, {"of", "in", "the", ","}) ? index + 2 : index + 1;
            const int week = is(of, {"the"}) ? of + 1 : of;
            if (is(week, {"week"}) && is(week + 1, {"after"}) && is(week + 2, {"next"}))
                return WorkedOut{ofWeek(*weekday, 2), week + 3};
            if (is(of, {"this", "next"}) && is(of + 1, {"week"}))
                return WorkedOut{ofWeek(*weekday, is(of, {"next"}) ? 1 : 0), of + 2};
            if (is(index + 1, {"after"}) && is(index + 2, {"next"}) && !has(index + 3, Terms::unit))
                return WorkedOut{ofWeek(*weekday, 2), index + 3};
            return is(index - 1, {"this"}) ? std::nullopt : comingBehind(*weekday, index);
        }
        if (is(index, {"this"}) && is(index + 1, {"week"})) {
            const int day = is(index + 2, {"on"}) ? index + 3 : index + 2;
            const auto weekday = weekdayAt(day);
            return weekday && mayFollow(day + 1) ? Worked(WorkedOut{ofWeek(*weekday, 0), day + 1}) : std::nullopt;
        }
        const int same = is(index, {"the"}) ? index + 1 : index;
        if (is(same, {"same", "this"}) && is(same + 1, {"day"}) && is(same + 2, {"next"}) && is(same + 3, {"week"}))
            return WorkedOut{m_today + days(daysInWeek), same + 4};
        const int coming = is(index, {"this", "the"}) ? index + 1 : index;
        const auto weekday = is(coming, {"coming", "upcoming"}) ? weekdayAt(coming + 1) : std::nullopt;
        return weekday ? Worked(WorkedOut{*nextWeekday(m_today, *weekday), coming + 2}) : std::nullopt;
    }

    /// "friday coming"
    Worked comingBehind(int weekday, int index) const
    {
        return is(index + 1, {"coming"}) && mayFollow(index + 2)
            ? Worked(WorkedOut{*nextWeekday(m_today, weekday), index + 2})
            : std::nullopt;
    }

    /// "on christmas eve", but not "the christmas party" nor "presents for christmas".
    Worked feast(int index) const
    {
        const auto day = NamedDay::feast(m_tokens, index, m_today);
        const bool isAhead = is(index - 1, {"on"}) && (isFirst(index) || (day && day->end > index + 1));
        if (!day || (!mayFollow(day->end) && !isAhead) || is(day->end, {"and", "or", "with", "of"}))
            return std::nullopt;
        if (m_hasRule && !isOnOneDate(index, day->day))
            return std::nullopt;
        const bool isLed = is(index - 1, {"on", "by"}) || index == m_tokens.start();
        const bool isWholeName = day->end - index > 1
            && !is(index - 1, {"for", "the", "my", "our", "about", "before", "after", "until", "till", "from"});
        return isLed || isWholeName ? Worked(WorkedOut{day->day, day->end}) : std::nullopt;
    }

    /// Every year; Easter is not.
    bool isOnOneDate(int index, LocalDay day) const
    {
        const auto next = NamedDay::feast(m_tokens, index, day + days(1));
        const auto dayIn = [](LocalDay of) {
            const std::chrono::year_month_day date(of);
            return date.month() / date.day();
        };
        return next && dayIn(next->day) == dayIn(day);
    }

    /// "on 20/3", "20.3.2028".
    Worked figures(int index) const
    {
        const RequestToken& token = m_tokens.token(index);
        const bool isLed = is(index - 1, {"on", "by", "until", "till", "due"})
            || (is(index - 1, {"the"}) && is(index - 2, {"on", "by"})) || has(index - 1, Terms::weekday);
        const bool isNumeric = token.kind == Kind::figures || (token.kind == Kind::number && is(index + 1, {"/", "-"}));
        const auto day = isNumeric ? NamedDay::date(m_tokens, index, m_today) : std::nullopt;
        const bool isIso = token.text.size() > 2 && token.kind == Kind::number; // SaidDates reads it.
        const bool isWhole = day && (isLed || day->end - index != 3) && (isLed || mayFollow(day->end)) && !isIso;
        return isWhole ? Worked(WorkedOut{day->day, day->end}) : std::nullopt;
    }

    const RequestTokens& m_tokens;
    LocalDay m_today;
    bool m_hasRule = false; ///< "The first monday of the month", every month, is no date.
};

} // namespace

std::optional<std::string> withWorkedOutDays(const RequestWording& wording, LocalDay today)
{
    return TokenReplacement::apply(wording, WorkedOutDays(wording.tokens(), today).find());
}

} // namespace quorvell
