// SPDX-License-Identifier: MIT
#include "QuorvellCore/text/Instant.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace quorvell {

namespace {

using std::chrono::days;
using std::chrono::hours;
using std::chrono::milliseconds;
using std::chrono::minutes;
using std::chrono::seconds;

// What the text form can hold.
constexpr Instant firstInstant = std::chrono::sys_days(std::chrono::year(0) / 1 / 1);
constexpr Instant lastInstant =
    std::chrono::sys_days(std::chrono::year(9999) / 12 / 31) + std::chrono::days(1) - milliseconds(1);

/// Takes text apart from the front; once something does not fit, everything after it fails too.
class Reader {
public:
    explicit Reader(std::string_view text)
        : m_rest(text)
    {
    }

    bool isFine() const { return m_isFine; }
    bool isAtEnd() const { return m_rest.empty(); }
    char peek() const { return m_rest.empty() ? '\0' : m_rest.front(); }

    void skip(char expected)
    {
        m_isFine = m_isFine && peek() == expected;
        if (m_isFine)
            m_rest.remove_prefix(1);
    }

    bool skipIf(char expected)
    {
        if (peek() != expected)
            return false;
        m_rest.remove_prefix(1);
        return true;
    }

    int digits(int count, int maximum)
    {
        int value = 0;
        for (int index = 0; index < count; ++index) {
            const char digit = peek();
            m_isFine = m_isFine && digit >= '0' && digit <= '9';
            if (!m_isFine)
                return 0;
            value = value * 10 + (digit - '0');
            m_rest.remove_prefix(1);
        }
        m_isFine = value <= maximum;
        return value;
    }

    milliseconds fraction()
    {
        int value = 0;
        int count = 0;
        for (; peek() >= '0' && peek() <= '9'; ++count) {
            if (count < 3)
                value = value * 10 + (peek() - '0');
            m_rest.remove_prefix(1);
        }
        m_isFine = m_isFine && count >= 1 && count <= 9;
        for (; count < 3; ++count)
            value *= 10;
        return milliseconds(value);
    }

private:
    std::string_view m_rest;
    bool m_isFine = true;
};

std::optional<std::chrono::sys_days> readDate(Reader& reader)
{
    const int year = reader.digits(4, 9999);
    reader.skip('-');
    const int month = reader.digits(2, 12);
    reader.skip('-');
    const int day = reader.digits(2, 31);
    const std::chrono::year_month_day date{std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
        std::chrono::day(static_cast<unsigned>(day))};
    if (!reader.isFine() || !date.ok())
        return std::nullopt;
    return std::chrono::sys_days(date);
}

milliseconds readTime(Reader& reader)
{
    milliseconds time = hours(reader.digits(2, 23));
    reader.skip(':');
    time += minutes(reader.digits(2, 59));
    reader.skip(':');
    time += seconds(reader.digits(2, 59));
    if (reader.skipIf('.'))
        time += reader.fraction();
    return time;
}

minutes readOffset(Reader& reader)
{
    if (reader.skipIf('Z'))
        return minutes(0);
    const bool isBehind = reader.peek() == '-';
    reader.skip(isBehind ? '-' : '+');
    minutes offset = hours(reader.digits(2, 23));
    reader.skip(':');
    offset += minutes(reader.digits(2, 59));
    return isBehind ? -offset : offset;
}

} // namespace

std::string isoText(Instant instant)
{
    instant = std::clamp(instant, firstInstant, lastInstant);

    const auto day = std::chrono::floor<days>(instant);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss time(instant - day);
    std::array<char, 64> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%04d-%02u-%02uT%02d:%02d:%02d.%03dZ", static_cast<int>(date.year()),
        static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()), static_cast<int>(time.hours().count()),
        static_cast<int>(time.minutes().count()), static_cast<int>(time.seconds().count()),
        static_cast<int>(time.subseconds().count()));
    return buffer.data();
}

std::optional<Instant> parseIsoText(std::string_view text)
{
    Reader reader(text);
    const auto day = readDate(reader);
    if (!day)
        return std::nullopt;
    reader.skip('T');
    const milliseconds time = readTime(reader);
    const minutes offset = readOffset(reader);
    if (!reader.isFine() || !reader.isAtEnd())
        return std::nullopt;
    const Instant instant = Instant(*day) + time - offset;
    return instant >= firstInstant && instant <= lastInstant ? std::optional(instant) : std::nullopt;
}

} // namespace quorvell
