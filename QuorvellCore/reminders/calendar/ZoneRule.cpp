// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/calendar/ZoneRule.h"

#include "QuorvellCore/text/TextReader.h"

#include <chrono>

namespace quorvell {

namespace {

constexpr std::int32_t secondsInHour = 3600;
constexpr int longestTime = 167; ///< Of a time; it may lie on another day of the week.
constexpr int longestOffsetHours = 24; ///< Hours between a clock and UTC.

constexpr TextReader::Width upToThree{1, 3};

/// "CET" or "<+0330>".
void skipName(TextReader& reader)
{
    constexpr std::size_t shortestName = 3;
    const bool isQuoted = reader.skipIf('<');
    reader.require(reader.until(isQuoted ? ">" : "+-,0123456789").size() >= shortestName);
    if (isQuoted)
        reader.skip('>');
}

/// "[+-]h[:m[:s]]", in seconds.
std::int32_t readDuration(TextReader& reader, int mostHours)
{
    const bool isNegative = reader.skipIf('-');
    if (!isNegative)
        reader.skipIf('+');
    std::int32_t seconds = reader.number(upToThree, {0, mostHours}) * secondsInHour;
    if (reader.skipIf(':'))
        seconds += reader.number(upToThree, {0, 59}) * 60;
    if (reader.skipIf(':'))
        seconds += reader.number(upToThree, {0, 59});
    return isNegative ? -seconds : seconds;
}

ZoneRule::Day readDay(TextReader& reader)
{
    ZoneRule::Day day;
    if (reader.skipIf('M')) {
        day.month = reader.number(upToThree, {1, 12});
        reader.skip('.');
        day.week = reader.number(upToThree, {1, 5});
        reader.skip('.');
        day.number = reader.number(upToThree, {0, 6});
    } else {
        const bool isWithoutLeapDay = reader.skipIf('J');
        day.form = isWithoutLeapDay ? ZoneRule::Day::Form::dayWithoutLeapDay : ZoneRule::Day::Form::dayOfYear;
        day.number = reader.number(upToThree, {isWithoutLeapDay ? 1 : 0, 365});
    }
    if (reader.skipIf('/'))
        day.time = readDuration(reader, longestTime);
    return day;
}

} // namespace

std::optional<ZoneRule> ZoneRule::parse(std::string_view text)
{
    TextReader reader(text);
    ZoneRule rule;
    skipName(reader);
    rule.standard = -readDuration(reader, longestOffsetHours); // counted westwards
    if (!reader.isAtEnd()) {
        skipName(reader);
        const bool hasOffset = !reader.skipIf(',');
        rule.saving = hasOffset ? -readDuration(reader, longestOffsetHours) : rule.standard + secondsInHour;
        if (hasOffset)
            reader.skip(',');
        rule.start = readDay(reader);
        reader.skip(',');
        rule.end = readDay(reader);
    }
    return reader.isFine() && reader.isAtEnd() ? std::optional(rule) : std::nullopt;
}

std::int64_t ZoneRule::momentOf(const Day& day, int year)
{
    using namespace std::chrono;
    const std::chrono::year which(year);
    sys_days date = which / January / 1;
    switch (day.form) {
    case Day::Form::weekdayOfMonth: {
        const std::chrono::weekday weekday(static_cast<unsigned>(day.number));
        const auto month = which / static_cast<int>(day.month);
        constexpr int last = 5;
        date = day.week == last ? sys_days(month / weekday[std::chrono::last])
                                : sys_days(month / weekday[static_cast<unsigned>(day.week)]);
        break;
    }
    case Day::Form::dayWithoutLeapDay:
        date += days(day.number - 1 + (which.is_leap() && day.number >= 60 ? 1 : 0)); // 60 is 1 March
        break;
    case Day::Form::dayOfYear:
        date += days(day.number);
        break;
    }
    return sys_seconds(date).time_since_epoch().count() + day.time;
}

} // namespace quorvell
