// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/state/ReminderRepeat.h"

#include "QuorvellCore/reminders/calendar/DecimalNumber.h"
#include "QuorvellCore/reminders/calendar/LocaleWords.h"
#include "QuorvellCore/reminders/calendar/ReminderWords.h"
#include "QuorvellCore/text/LowerCase.h"

#include <algorithm>

namespace quorvell {

namespace {

constexpr std::string_view monthlyMark = "monthly:";
constexpr std::string_view weeklyMark = "weekly:";

std::optional<ReminderRepeat> readMonthly(std::string_view number)
{
    const auto day = decimalNumber(number);
    return day && *day >= 1 && *day <= 31 ? std::optional(ReminderRepeat::monthly(*day)) : std::nullopt;
}

std::optional<ReminderRepeat> readWeekly(std::string_view list)
{
    ReminderRepeat rule{ReminderRepeat::Kind::weekly, {}, 0};
    for (std::size_t start = 0; start <= list.size();) {
        const std::size_t comma = std::min(list.find(',', start), list.size());
        const auto weekday = decimalNumber(list.substr(start, comma - start));
        if (!weekday || *weekday < 1 || *weekday > 7)
            return std::nullopt;
        if (std::find(rule.weekdays.begin(), rule.weekdays.end(), *weekday) == rule.weekdays.end())
            rule.weekdays.push_back(*weekday);
        start = comma + 1;
    }
    std::sort(rule.weekdays.begin(), rule.weekdays.end());
    return rule;
}

bool qualifies(const ReminderRepeat& rule, int weekday)
{
    switch (rule.kind) {
    case ReminderRepeat::Kind::weekdays:
        return weekday >= 2 && weekday <= 6;
    case ReminderRepeat::Kind::weekly:
        return std::find(rule.weekdays.begin(), rule.weekdays.end(), weekday) != rule.weekdays.end();
    case ReminderRepeat::Kind::daily:
    case ReminderRepeat::Kind::monthly:
    case ReminderRepeat::Kind::yearly:
        return true;
    }
    return true;
}

std::optional<Instant> nextByDays(const ReminderRepeat& rule, Instant after, Instant base, const Calendar& calendar)
{
    constexpr int longestSearch = 14;
    for (int step = 1; step <= longestSearch; ++step) {
        const Instant candidate = calendar.addingDays(base, std::chrono::days(step));
        if (candidate > after && qualifies(rule, Calendar::weekday(calendar.day(candidate))))
            return candidate;
    }
    return std::nullopt;
}

/// The base's time of day on that day of the month, or on the month's last day where it is shorter. Nothing outside
/// the years that a date can name.
std::optional<Instant> onDay(int year, int month, int day, Instant base, const Calendar& calendar)
{
    const auto target = Calendar::dayOf(year, month, std::clamp(day, 1, Calendar::daysInMonth(year, month)));
    return target ? std::optional(calendar.addingDays(base, *target - calendar.day(base))) : std::nullopt;
}

/// From the base's own month on, for a base that was put off may stand before its day.
std::optional<Instant> nextMonthly(int day, Instant after, Instant base, const Calendar& calendar)
{
    const Instant bound = std::max(after, base);
    const CalendarParts start = calendar.parts(bound);
    for (int step = 0; step <= 2; ++step) {
        const int month = start.month - 1 + step;
        const auto candidate = onDay(start.year + month / 12, month % 12 + 1, day, base, calendar);
        if (candidate && *candidate > bound)
            return candidate;
    }
    return std::nullopt;
}

std::optional<Instant> nextYearly(Instant after, Instant base, const Calendar& calendar)
{
    const CalendarParts start = calendar.parts(base);
    const int first = std::max(start.year + 1, calendar.parts(after).year);
    for (int year = first; year <= first + 1; ++year) {
        const auto candidate = onDay(year, start.month, start.day, base, calendar);
        if (candidate && *candidate > after)
            return candidate;
    }
    return std::nullopt;
}

} // namespace

std::optional<ReminderRepeat> ReminderRepeat::fromStored(std::string_view text)
{
    const std::string lower = lowerCased(text);
    if (lower == "daily")
        return daily();
    if (lower == "weekdays")
        return everyWeekday();
    if (lower == "yearly")
        return yearly();
    if (lower.starts_with(monthlyMark))
        return readMonthly(std::string_view(lower).substr(monthlyMark.size()));
    if (lower.starts_with(weeklyMark))
        return readWeekly(std::string_view(lower).substr(weeklyMark.size()));
    return std::nullopt;
}

std::string ReminderRepeat::stored() const
{
    switch (kind) {
    case Kind::daily:
        return "daily";
    case Kind::weekdays:
        return "weekdays";
    case Kind::yearly:
        return "yearly";
    case Kind::monthly:
        return std::string(monthlyMark) + std::to_string(dayOfMonth);
    case Kind::weekly:
        break;
    }
    std::string text(weeklyMark);
    for (const int weekday : weekdays) {
        if (text.size() > weeklyMark.size())
            text += ',';
        text += std::to_string(weekday);
    }
    return text;
}

std::string ReminderRepeat::spoken(const std::string& locale) const
{
    switch (kind) {
    case Kind::daily:
        return "Every day";
    case Kind::weekdays:
        return "Every weekday";
    case Kind::yearly:
        return "Every year";
    case Kind::monthly:
        return "Every month on the " + ReminderWords::ordinal(dayOfMonth);
    case Kind::weekly:
        break;
    }
    const auto names = weekdayNames(locale);
    std::string text = "Every ";
    for (std::size_t index = 0; index < weekdays.size(); ++index) {
        if (index > 0)
            text += index + 1 == weekdays.size() ? " and " : ", ";
        text += names[static_cast<std::size_t>(weekdays[index] - 1) % names.size()];
    }
    return text;
}

std::optional<Instant> ReminderRepeat::next(Instant after, Instant base, const Calendar& calendar) const
{
    switch (kind) {
    case Kind::daily:
    case Kind::weekdays:
    case Kind::weekly:
        return nextByDays(*this, after, base, calendar);
    case Kind::monthly:
        return nextMonthly(dayOfMonth, after, base, calendar);
    case Kind::yearly:
        return nextYearly(after, base, calendar);
    }
    return std::nullopt;
}

Instant ReminderRepeat::first(Instant start, const Calendar& calendar) const
{
    if (kind == Kind::yearly)
        return start; // has the date of its start, whichever that is
    const Instant dayBefore = calendar.addingDays(start, std::chrono::days(-1));
    return next(start - std::chrono::milliseconds(1), dayBefore, calendar).value_or(start);
}

} // namespace quorvell
