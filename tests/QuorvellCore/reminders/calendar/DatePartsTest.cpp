// SPDX-License-Identifier: MIT
// Catches dates from the model misread, or moved on their way to an instant and back.
#include "QuorvellCore/reminders/calendar/DateParts.h"

#include <gtest/gtest.h>

#include <tuple>

namespace quorvell {

TEST(DateParts, parses)
{
    const std::pair<const char*, DateParts> rows[] = {{"2026-11-22 17:00", {2026, 11, 22, 17, 0, false}},
        {" 2026-1-2T7:05\n", {2026, 1, 2, 7, 5, false}}, {"2026-11-22", {2026, 11, 22, 0, 0, true}},
        {"2024-02-30", {2024, 2, 30, 0, 0, true}}, {"2000-01-01 00:00", {2000, 1, 1, 0, 0, false}},
        {"2100-12-31 23:59", {2100, 12, 31, 23, 59, false}}};
    for (const auto& [text, parts] : rows)
        EXPECT_EQ(DateParts::parse(text), parts) << text;
    for (const char* text : {"1999-01-01", "2101-01-01", "2026-13-01", "2026-00-01", "2026-01-32", "2026-01-00",
             "2026-01-01 24:00", "2026-01-01 23:60", "2026-01-01 7:5", "2026-01-01  17:00", "2026-01-01 17:00:00",
             "26-01-01", "on 2026-01-01", ""})
        EXPECT_EQ(DateParts::parse(text), std::nullopt) << text;
    EXPECT_EQ(DateParts::parse(std::string(100'000, ' ') + "2026-01-01"), std::nullopt);
}

TEST(DateParts, addsOnTheClockFace)
{
    const std::tuple<DateParts, std::int64_t, DateParts> rows[] = {
        {{2026, 3, 29, 1, 30, false}, 60, {2026, 3, 29, 2, 30, false}},
        {{2026, 12, 31, 23, 59, false}, 1, {2027, 1, 1, 0, 0, false}},
        {{2026, 1, 1, 0, 0, false}, -1, {2025, 12, 31, 23, 59, false}},
        {{2024, 2, 28, 12, 0, false}, 24 * 60, {2024, 2, 29, 12, 0, false}},
        {{2024, 2, 30, 0, 0, true}, 0, {2024, 3, 1, 0, 0, true}},
        {{2026, 1, 1, 0, 0, false}, 366 * 24 * 60, {2027, 1, 2, 0, 0, false}},
    };
    for (const auto& [from, minutes, to] : rows)
        EXPECT_EQ(from.adding(minutes), to) << to.text();
    const DateParts wild{2'000'000'000, -2'000'000'000, 2'000'000'000, 2'000'000'000, -2'000'000'000, false};
    EXPECT_NE(wild.adding(INT64_MIN), wild);
}

TEST(DateParts, crossesToInstantsAndBack)
{
    const auto calendar = *Calendar::create("Europe/Berlin", "en_US");
    const Instant instant = *parseIsoText("2026-11-22T16:05:59.000Z");
    EXPECT_EQ(DateParts::from(instant, calendar).text(), "2026-11-22 17:05");
    EXPECT_EQ(DateParts::fromDay(instant, calendar).text(), "2026-11-22");
    EXPECT_EQ(isoText(*DateParts::parse("2026-11-22 17:05")->instant(calendar)), "2026-11-22T16:05:00.000Z");
    EXPECT_EQ(isoText(*DateParts::parse("2026-11-22")->instant(calendar)), "2026-11-21T23:00:00.000Z");
    EXPECT_FALSE(DateParts::parse("2026-02-29")->instant(calendar));
}

} // namespace quorvell
