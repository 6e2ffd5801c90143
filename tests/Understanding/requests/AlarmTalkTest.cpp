// SPDX-License-Identifier: MIT
// Catches words about alarms and timers that set, cancel or move another one than was meant, and words of other matters
// that are taken for them.
#include "RuleBench.h"
#include "Understanding/skills/alarms/TimerLength.h"

#include <gtest/gtest.h>

namespace quorvell {

TEST(AlarmTalk, carriesOutWhatIsSaid)
{
    checkConversations("alarms.txt", withCalendar(),
        {{"=two",
             R"({"status":"reminders","count":2,"reminders":[{"id":"a","task":"Alarm","kind":"alarm","date":"2026-11-22 07:00","when":"Sunday 22 November at 7 AM"},{"id":"b","task":"Gym","kind":"alarm","date":"2026-11-23 06:45","when":"Monday 23 November at 6:45 AM","repeat":"weekdays","repeat_words":"Every weekday"}]})"},
            {"=timers",
                R"({"status":"reminders","count":2,"reminders":[{"id":"p","task":"Pasta timer","kind":"timer","length_seconds":600,"remaining_seconds":125},{"id":"e","task":"Egg timer","kind":"timer","length_seconds":300,"remaining_seconds":61,"paused":true}]})"},
            {"=none", R"({"status":"reminders","count":0,"reminders":[]})"}});
}

TEST(TimerLength, isReadToTheSecond)
{
    const std::tuple<const char*, int, const char*> rows[] = {
        {"10 minutes", 600, ""},
        {"for an hour and a half", 5400, "for"},
        {"2 hours and 30 minutes", 9000, ""},
        {"90 secs", 90, ""},
        {"half an hour", 1800, ""},
        {"twenty five minutes called rice", 1500, "called rice"},
        {"ten-minute egg", 600, "egg"},
        {"5m", 300, ""},
        {"1h 30m", 5400, ""},
        {"1.5 hours", 5400, ""},
        {"two and a half minutes", 150, ""},
        {"a minute", 60, ""},
        {"three quarters of an hour", 2700, ""},
        {"pasta 8 minutes 30 seconds", 510, "pasta"},
    };
    for (const auto& [words, seconds, rest] : rows) {
        const auto length = TimerLength::read(words);
        ASSERT_TRUE(length) << words;
        EXPECT_EQ(length->length.count(), seconds) << words;
        EXPECT_EQ(length->rest, rest) << words;
    }
    for (const char* none : {"", "pasta", "minutes", "5 pm", "0 minutes", "400 hours", "at 10", "5 amazing apples"})
        EXPECT_FALSE(TimerLength::read(none)) << none;
    EXPECT_EQ(TimerLength::spoken(std::chrono::seconds(3905)), "1 hour and 5 minutes");
    EXPECT_EQ(TimerLength::spoken(std::chrono::seconds(61)), "1 minute and 1 second");
}

} // namespace quorvell
