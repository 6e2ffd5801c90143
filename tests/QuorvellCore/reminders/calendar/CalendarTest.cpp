// SPDX-License-Identifier: MIT
// Catches days and times around clock changes, and texts taken for dates that are none.
#include "QuorvellCore/reminders/calendar/Calendar.h"

#include "QuorvellCore/reminders/calendar/DaySearch.h"

#include <gtest/gtest.h>

#include <tuple>

namespace quorvell {
namespace {

using namespace std::chrono_literals;
using std::chrono::days;

Calendar calendarOf(const char* zone)
{
    return *Calendar::create(zone, "en_US");
}

LocalDay dayOf(int year, int month, int day)
{
    return *Calendar::dayOf(year, month, day);
}

TEST(Calendar, timesOnDaysOfClockChanges)
{
    const std::tuple<const char*, LocalDay, std::chrono::minutes, const char*> rows[] = {
        {"Europe/Berlin", dayOf(2026, 11, 22), 17h, "2026-11-22T16:00:00.000Z"},
        {"Europe/Berlin", dayOf(2026, 3, 29), 1h + 59min, "2026-03-29T00:59:00.000Z"},
        {"Europe/Berlin", dayOf(2026, 3, 29), 2h + 30min, "2026-03-29T01:30:00.000Z"}, // Skipped: 3:30.
        {"Europe/Berlin", dayOf(2026, 10, 25), 2h + 30min, "2026-10-25T00:30:00.000Z"}, // Twice: the first.
        {"America/New_York", dayOf(2026, 3, 8), 2h, "2026-03-08T07:00:00.000Z"},
        {"America/New_York", dayOf(2026, 11, 1), 1h + 30min, "2026-11-01T05:30:00.000Z"},
        {"Australia/Lord_Howe", dayOf(2026, 10, 4), 2h + 15min, "2026-10-03T15:45:00.000Z"}, // Half an hour skipped.
        {"Asia/Kolkata", dayOf(2026, 1, 1), 0h, "2025-12-31T18:30:00.000Z"},
        {"Pacific/Apia", dayOf(2011, 12, 30), 9h, "2011-12-30T19:00:00.000Z"}, // The whole day was skipped.
        {"UTC", dayOf(2026, 12, 31), 24h, "2027-01-01T00:00:00.000Z"},
    };
    for (const auto& [zone, day, time, instant] : rows)
        EXPECT_EQ(isoText(calendarOf(zone).instant(day, time)), instant) << instant;
}

TEST(Calendar, addsDaysByTheCalendar)
{
    const std::tuple<const char*, const char*, int, const char*> rows[] = {
        {"Europe/Berlin", "2026-03-28T16:00:00.000Z", 1, "2026-03-29T15:00:00.000Z"},
        {"Europe/Berlin", "2026-10-24T15:00:00.000Z", 1, "2026-10-25T16:00:00.000Z"},
        {"Europe/Berlin", "2026-03-28T01:30:00.000Z", 1, "2026-03-29T01:30:00.000Z"},
        {"Europe/Berlin", "2026-03-28T01:30:00.000Z", 2, "2026-03-30T00:30:00.000Z"},
        {"America/New_York", "2026-12-31T22:00:00.123Z", 1, "2027-01-01T22:00:00.123Z"},
        {"UTC", "2026-01-01T10:00:00.000Z", -1, "2025-12-31T10:00:00.000Z"},
        {"America/New_York", "2026-11-01T06:30:00.000Z", 0, "2026-11-01T06:30:00.000Z"},
    };
    for (const auto& [zone, from, count, to] : rows)
        EXPECT_EQ(isoText(calendarOf(zone).addingDays(*parseIsoText(from), days(count))), to) << to;
}

TEST(Calendar, partsAndStartOfDay)
{
    const Calendar berlin = calendarOf("Europe/Berlin");
    EXPECT_EQ(berlin.parts(*parseIsoText("2026-11-21T23:30:15.999Z")), (CalendarParts{2026, 11, 22, 0, 30, 15, 1}));
    EXPECT_EQ(berlin.parts(*parseIsoText("1969-12-31T22:59:59.999Z")), (CalendarParts{1969, 12, 31, 23, 59, 59, 4}));
    EXPECT_EQ(isoText(berlin.startOfDay(*parseIsoText("2026-03-29T10:00:00Z"))), "2026-03-28T23:00:00.000Z");
    // In Beirut the clock goes from midnight to one.
    EXPECT_EQ(isoText(calendarOf("Asia/Beirut").startOfDay(*parseIsoText("2022-03-27T10:00:00Z"))),
        "2022-03-26T22:00:00.000Z");
}

TEST(Calendar, isStrict)
{
    for (const char* zone : {"", "Berlin", "Europe/Nowhere", "europe/berlin\n"})
        EXPECT_FALSE(Calendar::create(zone, "en_US")) << zone;
    EXPECT_FALSE(Calendar::dayOf(2026, 2, 29));
    EXPECT_FALSE(Calendar::dayOf(2026, 4, 31));
    EXPECT_FALSE(Calendar::dayOf(2026, 13, 1));
    EXPECT_FALSE(Calendar::dayOf(2026, 1, 0));
    EXPECT_FALSE(Calendar::dayOf(0, 1, 1));
    EXPECT_TRUE(Calendar::dayOf(2028, 2, 29));
    EXPECT_EQ(Calendar::daysInMonth(2028, 2), 29);
    EXPECT_EQ(Calendar::daysInMonth(2100, 2), 28);
}

TEST(DaySearch, weekdays)
{
    const LocalDay wednesday = dayOf(2026, 11, 18);
    EXPECT_EQ(nextWeekday(wednesday, 4), wednesday + days(7));
    EXPECT_EQ(nextWeekday(wednesday, 5), wednesday + days(1));
    EXPECT_EQ(nextWeekday(wednesday, 3), wednesday + days(6));
    EXPECT_EQ(nextWeekday(wednesday, 8), std::nullopt);
    const LocalDay sunday = dayOf(2026, 11, 22);
    EXPECT_EQ(weekdayOfNextWeek(wednesday, 1), dayOf(2026, 11, 29));
    EXPECT_EQ(weekdayOfNextWeek(sunday, 2), dayOf(2026, 11, 23));
    EXPECT_EQ(weekdayOfNextWeek(sunday, 1), dayOf(2026, 11, 29));
}

TEST(DaySearch, dates)
{
    const LocalDay today = dayOf(2026, 11, 21);
    EXPECT_EQ(nextDate(11, 21, today), today);
    EXPECT_EQ(nextDate(11, 20, today), dayOf(2027, 11, 20));
    EXPECT_EQ(nextDate(2, 30, today), std::nullopt);
    EXPECT_EQ(nextDate(2, 29, today), std::nullopt); // The next one is more than a year away.
    EXPECT_EQ(nextDate(2, 29, dayOf(2027, 3, 1)), dayOf(2028, 2, 29));
    EXPECT_EQ(nextDayOfMonth(today, 21), today);
    EXPECT_EQ(nextDayOfMonth(today, 20), dayOf(2026, 12, 20));
    EXPECT_EQ(nextDayOfMonth(today, 31), dayOf(2026, 12, 31));
    EXPECT_EQ(nextDayOfMonth(dayOf(2027, 1, 30), 30), dayOf(2027, 1, 30));
    EXPECT_EQ(nextDayOfMonth(dayOf(2027, 1, 31), 30), dayOf(2027, 3, 30));
    EXPECT_EQ(nextDayOfMonth(today, 32), std::nullopt);
    EXPECT_EQ(nextDayOfMonth(today, 0), std::nullopt);
}

} // namespace
} // namespace quorvell
