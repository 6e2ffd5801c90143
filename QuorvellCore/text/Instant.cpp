// SPDX-License-Identifier: MIT
#include "QuorvellCore/text/Instant.h"

#include "QuorvellCore/text/TextReader.h"

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

constexpr TextReader::Width two{2, 2};

std::optional<std::chrono::sys_days> readDate(TextReader& reader)
{
    const int year = reader.number({4, 4}, {0, 9999});
    reader.skip('-');
    const int month = reader.number(two, {1, 12});
    reader.skip('-');
    const int day = reader.number(two, {1, 31});
    const std::chrono::year_month_day date{std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
        std::chrono::day(static_cast<unsigned>(day))};
    if (!reader.isFine() || !date.ok())
        return std::nullopt;
    return std::chrono::sys_days(date);
}

/// Cut to three digits.
milliseconds readFraction(TextReader& reader)
{
    const std::string_view digits = reader.digits({1, 9});
    int value = 0;
    for (std::size_t position = 0; position < 3; ++position)
        value = value * 10 + (position < digits.size() ? digits[position] - '0' : 0);
    return milliseconds(value);
}

milliseconds readTime(TextReader& reader)
{
    milliseconds time = hours(reader.number(two, {0, 23}));
    reader.skip(':');
    time += minutes(reader.number(two, {0, 59}));
    reader.skip(':');
    time += seconds(reader.number(two, {0, 59}));
    if (reader.skipIf('.'))
        time += readFraction(reader);
    return time;
}

minutes readOffset(TextReader& reader)
{
    if (reader.skipIf('Z'))
        return minutes(0);
    const bool isBehind = reader.skipIf('-');
    if (!isBehind)
        reader.skip('+');
    minutes offset = hours(reader.number(two, {0, 23}));
    reader.skip(':');
    offset += minutes(reader.number(two, {0, 59}));
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
    TextReader reader(text);
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
