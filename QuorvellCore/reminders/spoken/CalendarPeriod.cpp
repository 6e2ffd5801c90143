// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/spoken/CalendarPeriod.h"

#include "QuorvellCore/reminders/spoken/NamedDay.h"

#include <algorithm>

namespace quorvell {

namespace {

using std::chrono::year_month;

} // namespace

std::chrono::year_month CalendarPeriod::of(LocalDay day)
{
    const std::chrono::year_month_day date(day);
    return date.year() / date.month();
}

std::optional<CalendarPeriod> CalendarPeriod::at(const RequestTokens& tokens, int index, LocalDay today)
{
    const year_month now = of(today);
    if (const auto month = tokens.token(index).terms.valueOf(WordTerms::month)) {
        const std::chrono::month name(static_cast<unsigned>(*month));
        const int yearIndex = tokens.is(index + 1, {"of", "in", ","}) ? index + 2 : index + 1;
        if (const auto year = NamedDay::year(tokens, yearIndex))
            return CalendarPeriod{std::chrono::year(*year) / name, 1, 0, yearIndex + 1};
        const year_month coming = (now.month() > name ? now.year() + std::chrono::years(1) : now.year()) / name;
        return CalendarPeriod{coming, 1, monthsOfYear, index + 1};
    }
    const bool isNext = tokens.is(index, {"next"});
    const int unit = isNext || tokens.is(index, {"the", "this"}) ? index + 1 : index;
    const bool isFixed = isNext || tokens.is(index, {"this"});
    if (tokens.is(unit, {"month"}))
        return CalendarPeriod{now + std::chrono::months(isNext ? 1 : 0), 1, isFixed ? 0 : 1, unit + 1};
    if (tokens.is(unit, {"year"}) && unit > index)
        return CalendarPeriod{
            (now.year() + std::chrono::years(isNext ? 1 : 0)) / std::chrono::January, monthsOfYear, 0, unit + 1};
    return std::nullopt;
}

LocalDay CalendarPeriod::firstDay() const
{
    return LocalDay(month / std::chrono::day(1));
}

LocalDay CalendarPeriod::lastDay() const
{
    return LocalDay((month + std::chrono::months(months)) / std::chrono::day(1)) - std::chrono::days(1);
}

CalendarPeriod CalendarPeriod::next() const
{
    CalendarPeriod later = *this;
    later.month += std::chrono::months(monthsToNext);
    return later;
}

LocalDay CalendarPeriod::adding(LocalDay day, int count)
{
    const std::chrono::year_month_day date(day);
    const year_month month = of(day) + std::chrono::months(count);
    const std::chrono::day last = (month / std::chrono::last).day();
    return LocalDay(month / std::min(date.day(), last));
}

} // namespace quorvell
