// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/ZoneRule.h"

#include <algorithm>
#include <chrono>

namespace quorvell {

namespace {

constexpr std::int32_t secondsInHour = 3600;
constexpr int longestHours = 167; ///< Of a time; it may lie on another day of the week.

/// Takes the text apart from the front; once something does not fit, everything after it fails too.
class Reader {
public:
    explicit Reader(std::string_view text)
        : m_rest(text)
    {
    }

    bool isFine() const { return m_isFine; }
    bool isAtEnd() const { return m_rest.empty(); }

    bool skipIf(char expected)
    {
        const bool isThere = m_rest.starts_with(expected);
        m_rest.remove_prefix(isThere ? 1 : 0);
        return isThere;
    }
    void skip(char expected) { m_isFine = skipIf(expected) && m_isFine; }

    /// "CET" or "<+0330>".
    void skipName()
    {
        constexpr std::size_t shortestName = 3;
        const bool isQuoted = skipIf('<');
        const std::size_t length =
            std::min(isQuoted ? m_rest.find('>') : m_rest.find_first_of("+-,0123456789"), m_rest.size());
        m_isFine = m_isFine && length >= shortestName;
        m_rest.remove_prefix(length);
        if (isQuoted)
            skip('>');
    }

    int number(int least, int most)
    {
        int value = 0;
        std::size_t digits = 0;
        for (; digits < m_rest.size() && digits < 3 && m_rest[digits] >= '0' && m_rest[digits] <= '9'; ++digits)
            value = value * 10 + (m_rest[digits] - '0');
        m_rest.remove_prefix(digits);
        m_isFine = m_isFine && digits > 0 && value >= least && value <= most;
        return value;
    }

    /// "[+-]h[:m[:s]]", in seconds.
    std::int32_t duration()
    {
        const bool isNegative = skipIf('-');
        if (!isNegative)
            skipIf('+');
        std::int32_t seconds = number(0, longestHours) * secondsInHour;
        if (skipIf(':'))
            seconds += number(0, 59) * 60;
        if (skipIf(':'))
            seconds += number(0, 59);
        return isNegative ? -seconds : seconds;
    }

    ZoneRule::Day day()
    {
        ZoneRule::Day day;
        if (skipIf('M')) {
            day.month = number(1, 12);
            skip('.');
            day.week = number(1, 5);
            skip('.');
            day.number = number(0, 6);
        } else {
            const bool isWithoutLeapDay = skipIf('J');
            day.form = isWithoutLeapDay ? ZoneRule::Day::Form::dayWithoutLeapDay : ZoneRule::Day::Form::dayOfYear;
            day.number = number(isWithoutLeapDay ? 1 : 0, 365);
        }
        if (skipIf('/'))
            day.time = duration();
        return day;
    }

private:
    std::string_view m_rest;
    bool m_isFine = true;
};

} // namespace

std::optional<ZoneRule> ZoneRule::parse(std::string_view text)
{
    Reader reader(text);
    ZoneRule rule;
    reader.skipName();
    rule.standard = -reader.duration(); // counted westwards
    if (!reader.isAtEnd()) {
        reader.skipName();
        const bool hasOffset = !reader.skipIf(',');
        rule.saving = hasOffset ? -reader.duration() : rule.standard + secondsInHour;
        if (hasOffset)
            reader.skip(',');
        rule.start = reader.day();
        reader.skip(',');
        rule.end = reader.day();
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
