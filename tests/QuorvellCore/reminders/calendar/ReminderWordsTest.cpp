// SPDX-License-Identifier: MIT
// Catches moments said to the user as another day or hour than they are.
#include "QuorvellCore/reminders/calendar/ReminderWords.h"

#include "QuorvellCore/reminders/calendar/LocaleWords.h"

#include <gtest/gtest.h>

namespace quorvell {

using Time = ReminderWords::Time;

TEST(ReminderWords, sayAnInstant)
{
    const struct Row {
        const char* locale;
        const char* date; ///< 2026-11-21T11:00Z is noon on a Saturday.
        const char* spoken;
        const char* full;
        const char* shortWords;
        const char* choice;
    } rows[] = {
        {"en_US", "2026-11-22T16:00:00Z", "Sunday 22 November at 5 PM", "Sunday 22 Nov, 5 PM", "Sun 22 Nov, 5 PM",
            "Sun 22 Nov, 5 PM"},
        {"en_US", "2026-11-21T16:30:00Z", "Saturday 21 November at 5:30 PM", "Today, 5:30 PM", "5:30 PM",
            "This evening, 5:30 PM"},
        {"en_US", "2026-11-21T10:59:00Z", "Saturday 21 November at 11:59 AM", "Today, 11:59 AM", "11:59 AM",
            "This morning, 11:59 AM"},
        {"en_US", "2026-11-21T11:00:00Z", "Saturday 21 November at 12 PM", "Today, 12 PM", "12 PM",
            "This afternoon, 12 PM"},
        {"en_US", "2026-11-21T15:59:00Z", "Saturday 21 November at 4:59 PM", "Today, 4:59 PM", "4:59 PM",
            "This afternoon, 4:59 PM"},
        {"en_US", "2026-11-21T23:05:00Z", "Sunday 22 November at 12:05 AM", "Sunday 22 Nov, 12:05 AM",
            "Sun 22 Nov, 12:05 AM", "Sun 22 Nov, 12:05 AM"},
        {"en_GB", "2026-11-22T08:05:00Z", "Sunday 22 November at 09:05", "Sunday 22 Nov, 09:05", "Sun 22 Nov, 09:05",
            "Sun 22 Nov, 09:05"},
        {"de_DE", "2026-11-22T16:00:00Z", "Sunday 22 November at 17:00", "Sunday 22 Nov, 17:00", "Sun 22 Nov, 17:00",
            "Sun 22 Nov, 17:00"},
        {"xx", "2026-11-22T16:00:00Z", "Sunday 22 November at 17:00", "Sunday 22 Nov, 17:00", "Sun 22 Nov, 17:00",
            "Sun 22 Nov, 17:00"},
    };
    const auto calendar = *Calendar::create("Europe/Berlin", "en_US");
    const Instant now = *parseIsoText("2026-11-21T11:00:00Z");
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.locale) + " " + row.date);
        const Instant date = *parseIsoText(row.date);
        EXPECT_EQ(ReminderWords::spoken(date, now, calendar, row.locale), row.spoken);
        EXPECT_EQ(ReminderWords::full(date, Time::isKnown, now, calendar, row.locale), row.full);
        EXPECT_EQ(ReminderWords::short_(date, now, calendar, row.locale), row.shortWords);
        EXPECT_EQ(ReminderWords::choice(date, now, calendar, row.locale), row.choice);
    }
    const Instant tomorrow = *parseIsoText("2026-11-22T08:00:00Z");
    EXPECT_EQ(ReminderWords::full(tomorrow, Time::isUnknown, now, calendar, "en_US"), "Sunday 22 Nov");
    EXPECT_EQ(ReminderWords::full(now, Time::isUnknown, now, calendar, "en_US"), "Today");
}

TEST(ReminderWords, clockOfOtherCountries)
{
    const auto calendar = *Calendar::create("UTC", "en_US");
    const Instant date = *parseIsoText("2026-11-22T17:05:00Z");
    EXPECT_EQ(ReminderWords::clock(date, calendar, "en_AU"), "5:05 pm");
    EXPECT_EQ(ReminderWords::clock(date, calendar, "ko_KR"), "5:05 PM");
    EXPECT_EQ(ReminderWords::clock(date, calendar, "fr_FR"), "17:05");
    EXPECT_EQ(ReminderWords::clock(date, calendar, "fr_CA"), "17:05"); // Its pattern is "HH 'h' mm".
    for (const char* locale :
        {"", "C.UTF-8", "POSIX", "not a locale", "@", "../x", "en_US@calendar=;;", "averylonglanguage"})
        EXPECT_EQ(ReminderWords::spoken(date, date, calendar, locale), "Sunday 22 November at 5:05 PM") << locale;
    // Other calendars' years and months never leak in.
    EXPECT_EQ(formatted(date, "d M y", calendar, "th_TH_TRADITIONAL@calendar=buddhist"), "22 11 2026");
}

TEST(ReminderWords, ordinals)
{
    for (const auto& [number, text] :
        {std::pair{1, "1st"}, {2, "2nd"}, {3, "3rd"}, {4, "4th"}, {10, "10th"}, {11, "11th"}, {12, "12th"},
            {13, "13th"}, {21, "21st"}, {22, "22nd"}, {101, "101st"}, {111, "111th"}, {113, "113th"}, {0, "0th"}})
        EXPECT_EQ(ReminderWords::ordinal(number), text);
}

} // namespace quorvell
