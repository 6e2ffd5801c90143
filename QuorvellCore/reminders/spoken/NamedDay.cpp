// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/spoken/NamedDay.h"

#include "QuorvellCore/reminders/calendar/DaySearch.h"
#include "QuorvellCore/reminders/calendar/DecimalNumber.h"
#include "QuorvellCore/reminders/calendar/FeastDays.h"
#include "QuorvellCore/reminders/spoken/TokenNumber.h"
#include "QuorvellCore/reminders/wording/TimeTerms.h"

#include <array>
#include <string>

namespace quorvell {

namespace {

using Kind = RequestToken::Kind;
using Terms = WordTerms;
using Day = std::optional<NamedDay>;
using std::chrono::days;

constexpr int lastMonth = 12;
constexpr int longestMonth = 31;

Day dayUntil(std::optional<LocalDay> day, int end)
{
    return day ? Day(NamedDay{*day, end}) : std::nullopt;
}

int figure(const RequestTokens& tokens, int index)
{
    return tokens.token(index).kind == Kind::number ? decimalNumber(tokens.token(index).text).value_or(0) : 0;
}

std::optional<int> monthAt(const RequestTokens& tokens, int index)
{
    return tokens.token(index).terms.valueOf(Terms::month);
}

/// 5, or 5th; not the hour of "march 5 pm".
std::optional<TokenNumber> dayNumber(const RequestTokens& tokens, int index)
{
    const Kind kind = tokens.token(index).kind;
    const bool isDigits = kind == Kind::number && tokens.token(index).text.size() <= 2;
    const bool isClock = TimeTerms::clockLength(tokens, index) > 0;
    if (isDigits && !isClock)
        return TokenNumber{figure(tokens, index), index + 1};
    const auto ordinal = TokenNumber::ordinal(tokens, index);
    return ordinal && ordinal->value <= longestMonth ? ordinal : std::nullopt;
}

Day inYear(const RequestTokens& tokens, int end, int month, int day, LocalDay today)
{
    const int yearIndex = tokens.is(end, {",", "in", "of"}) ? end + 1 : end;
    if (const auto year = NamedDay::year(tokens, yearIndex))
        return dayUntil(Calendar::dayOf(*year, month, day), yearIndex + 1);
    return dayUntil(nextDate(month, day, today), end);
}

Day dayAndMonth(const RequestTokens& tokens, int index, LocalDay today)
{
    const auto day = dayNumber(tokens, index);
    const int monthIndex = day && tokens.is(day->end, {"of"}) ? day->end + 1 : day ? day->end : index;
    const auto month = day ? monthAt(tokens, monthIndex) : std::nullopt;
    return month ? inYear(tokens, monthIndex + 1, *month, day->value, today) : std::nullopt;
}

Day monthAndDay(const RequestTokens& tokens, int index, LocalDay today)
{
    const auto month = monthAt(tokens, index);
    const auto day = month ? dayNumber(tokens, tokens.is(index + 1, {"the"}) ? index + 2 : index + 1) : std::nullopt;
    return day ? inYear(tokens, day->end, *month, day->value, today) : std::nullopt;
}

/// Of two numbers one is the month where the other cannot be; equal ones are both.
Day ofFigures(int first, int second, std::optional<int> year, int end, LocalDay today)
{
    const bool isDayFirst = first > lastMonth && second <= lastMonth;
    const bool isMonthFirst = second > lastMonth && first <= lastMonth;
    if (!isDayFirst && !isMonthFirst && first != second)
        return std::nullopt;
    const int month = isDayFirst ? second : first;
    const int day = isDayFirst ? first : second;
    return dayUntil(year ? Calendar::dayOf(*year, month, day) : nextDate(month, day, today), end);
}

std::optional<int> fullYear(int year)
{
    constexpr int century = 2000;
    if (year > century && year < century + 100)
        return year;
    return year > 0 && year < 100 ? std::optional(century + year) : std::nullopt;
}

/// "20/3/2028", "20-3-2028", "20/3"; the mark stands without spaces.
Day withSlashes(const RequestTokens& tokens, int index, LocalDay today)
{
    const auto isMark = [&](int at) {
        return tokens.is(at, {"/", "-"}) && !tokens.token(at).followsSpace && !tokens.token(at + 1).followsSpace;
    };
    if (!isMark(index + 1) || figure(tokens, index) == 0 || figure(tokens, index + 2) == 0)
        return std::nullopt;
    if (figure(tokens, index) > longestMonth) // "2028-03-20", "2028/3/20"
        return isMark(index + 3) && NamedDay::year(tokens, index)
            ? dayUntil(
                Calendar::dayOf(figure(tokens, index), figure(tokens, index + 2), figure(tokens, index + 4)), index + 5)
            : std::nullopt;
    const bool hasYear = isMark(index + 3) && tokens.is(index + 3, {tokens.token(index + 1).text});
    const auto year = hasYear ? fullYear(figure(tokens, index + 4)) : std::nullopt;
    if (hasYear != year.has_value() || (!hasYear && tokens.is(index + 1, {"-"})))
        return std::nullopt;
    return ofFigures(figure(tokens, index), figure(tokens, index + 2), year, hasYear ? index + 5 : index + 3, today);
}

/// "20.3.2028"
Day withDots(const RequestTokens& tokens, int index, LocalDay today)
{
    const std::string_view text = tokens.token(index).text;
    const auto first = text.find('.');
    const auto last = text.rfind('.');
    constexpr std::size_t yearDigits = 4;
    if (tokens.token(index).kind != Kind::figures || first == last || text.size() - last - 1 != yearDigits)
        return std::nullopt;
    const auto part = [&](std::size_t start, std::size_t end) {
        return decimalNumber(text.substr(start, end - start)).value_or(0);
    };
    const auto year = fullYear(part(last + 1, text.size()));
    return year ? ofFigures(part(0, first), part(first + 1, last), year, index + 1, today) : std::nullopt;
}

Day relativeDay(const RequestTokens& tokens, int index, LocalDay today)
{
    const int day = tokens.is(index, {"the"}) ? index + 1 : index;
    if (tokens.is(day, {"day"}) && tokens.is(day + 1, {"after"}) && tokens.is(day + 2, {"tomorrow", "tmrw"}))
        return NamedDay{today + days(2), day + 3};
    if (tokens.is(index, {"today"}))
        return NamedDay{today, index + 1};
    return tokens.is(index, {"tomorrow", "tmrw"}) ? Day(NamedDay{today + days(1), index + 1}) : std::nullopt;
}

Day weekday(const RequestTokens& tokens, int index, LocalDay today)
{
    const bool isNext = tokens.is(index, {"next"});
    const bool isThis = tokens.is(index, {"this"});
    const int name = isNext || isThis || tokens.is(index, {"coming"}) ? index + 1 : index;
    const auto number = tokens.token(name).terms.valueOf(Terms::weekday);
    if (!number)
        return std::nullopt;
    if (isNext)
        return NamedDay{weekdayOfNextWeek(today, *number), name + 1};
    return isThis && Calendar::weekday(today) == *number ? NamedDay{today, name + 1}
                                                         : dayUntil(nextWeekday(today, *number), name + 1);
}

Day dayOfMonth(const RequestTokens& tokens, int index, LocalDay today)
{
    const auto day = tokens.is(index, {"the"}) ? TokenNumber::ordinal(tokens, index + 1) : std::nullopt;
    return day ? dayUntil(nextDayOfMonth(today, day->value), day->end) : std::nullopt;
}

} // namespace

std::optional<int> NamedDay::year(const RequestTokens& tokens, int index)
{
    constexpr std::size_t digits = 4;
    const RequestToken& token = tokens.token(index);
    const bool isYear = token.kind == Kind::number && token.text.size() == digits && token.text.starts_with("20")
        && TimeTerms::clockLength(tokens, index) == 0 && !tokens.is(index - 1, {"at", "by", "@"});
    return isYear ? decimalNumber(token.text) : std::nullopt;
}

std::optional<NamedDay> NamedDay::feast(const RequestTokens& tokens, int index, LocalDay today)
{
    const std::string_view first = tokens.token(index).text;
    if (!FeastDays::mayBegin(first.substr(0, first.find_first_of("'’"))))
        return std::nullopt;
    std::string name;
    Day longest;
    for (int end = index; end < index + FeastDays::mostWords && tokens.isInside(end); ++end) {
        const std::string_view word = tokens.token(end).text;
        name += (name.empty() || word == "'" || word == "’" ? "" : " ") + std::string(word);
        const std::chrono::sys_days from(today.time_since_epoch());
        if (const auto feast = FeastDays::next(from, name, FeastDays::Names::ofOneDay))
            longest = NamedDay{LocalDay(feast->day.time_since_epoch()), end + 1};
    }
    return longest;
}

std::optional<NamedDay> NamedDay::date(const RequestTokens& tokens, int index, LocalDay today)
{
    for (const auto reader : {dayAndMonth, monthAndDay, withSlashes, withDots})
        if (auto day = reader(tokens, index, today))
            return day;
    return std::nullopt;
}

std::optional<NamedDay> NamedDay::at(const RequestTokens& tokens, int index, LocalDay today)
{
    const int first = tokens.is(index, {"on"}) ? index + 1 : index;
    if (auto day = date(tokens, tokens.is(first, {"the"}) ? first + 1 : first, today))
        return day;
    for (const auto reader : {relativeDay, weekday, dayOfMonth, feast})
        if (auto day = reader(tokens, first, today))
            return day;
    return std::nullopt;
}

} // namespace quorvell
