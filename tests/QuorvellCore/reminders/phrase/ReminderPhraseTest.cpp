// SPDX-License-Identifier: MIT
// Catches days, times and repeats misunderstood in a phrase, and texts that take too long.
#include "QuorvellCore/reminders/phrase/ReminderPhrase.h"

#include "QuorvellCore/reminders/calendar/DateParts.h"
#include "QuorvellCore/reminders/phrase/ReminderPhraseJson.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <atomic>
#include <span>
#include <thread>
#include <vector>

namespace quorvell {
namespace {

const Calendar calendar = *Calendar::create("Europe/Berlin", "en_US");
const Instant now = *parseIsoText("2026-11-21T09:30:00Z"); ///< Saturday, 10:30 in Berlin.

/// Times as the clock of `zone` shows them; alternatives follow the date. A day without a time has "09:00?".
struct Row {
    const char* text;
    const char* task;
    const char* dates;
    const char* timeWords;
    const char* rule = "";
};

struct Surroundings {
    const char* zone = "Europe/Berlin";
    const char* now = "2026-11-21T09:30:00.000Z"; ///< Saturday, 10:30 in Berlin.
};

std::string datesOf(const ReminderPhrase& phrase, const Calendar& user)
{
    std::string dates = DateParts::from(phrase.date, user).text() + (phrase.hasTime ? "" : "?");
    for (const Instant alternative : phrase.alternatives)
        dates += ", " + DateParts::from(alternative, user).text();
    return dates;
}

void check(const Surroundings& surroundings, std::span<const Row> rows)
{
    const auto user = *Calendar::create(surroundings.zone, "en_US");
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const auto phrase = ReminderPhrase::parse(row.text, *parseIsoText(surroundings.now), user);
        ASSERT_TRUE(phrase);
        EXPECT_EQ(phrase->task, row.task);
        EXPECT_EQ(datesOf(*phrase, user), row.dates);
        EXPECT_EQ(phrase->timeWords, row.timeWords);
        EXPECT_EQ(phrase->repeatRule ? phrase->repeatRule->stored() : "", row.rule);
    }
}

TEST(ReminderPhrase, days)
{
    const Row rows[] = {
        {"tomorrow", "", "2026-11-22 09:00?", "tomorrow"},
        {"call mum tmrw", "Call mum", "2026-11-22 09:00?", "tmrw"},
        {"today pay rent", "Pay rent", "2026-11-21 09:00?", "today"},
        {"tonight", "", "2026-11-21 20:00", "tonight"},
        {"day after tomorrow at noon water the plants", "Water the plants", "2026-11-23 12:00",
            "day after tomorrow at noon"},
        {"tomorrow afternoon yoga", "Yoga", "2026-11-22 14:00", "tomorrow afternoon"},
        {"this evening lock the door", "Lock the door", "2026-11-21 18:00", "this evening"},
        {"this morning", "", "2026-11-21 09:00", "this morning"},
        {"in the morning call bob", "Call bob", "2026-11-22 09:00", "in the morning"},
        {"evening walk", "Walk", "2026-11-21 18:00", "evening"},
        {"on friday night put out the bins", "Put out the bins", "2026-11-27 20:00", "on friday night"},
        {"sun", "", "2026-11-22 09:00?", "sun"},
        {"dentist on saturday", "Dentist", "2026-11-28 09:00?", "on saturday"},
        {"this saturday at 11:30am gym", "Gym", "2026-11-21 11:30", "this saturday at 11:30am"},
        {"this saturday at 9am gym", "Gym", "2026-11-28 09:00", "this saturday at 9am"},
        {"this saturday at 9 gym", "Gym", "2026-11-21 21:00, 2026-11-28 09:00", "this saturday at 9"},
        {"coming saturday", "", "2026-11-28 09:00?", "coming saturday"},
        {"next sunday", "", "2026-11-29 09:00?", "next sunday"},
        {"next friday dentist", "Dentist", "2026-11-27 09:00?", "next friday"},
        {"next week call", "Call", "2026-11-28 09:00?", "next week"},
        {"review monday next week at 9am", "Review", "2026-11-23 09:00", "monday next week at 9am"},
        {"march 5", "", "2027-03-05 09:00?", "march 5"},
        {"on the 5th of march at 10am tax", "Tax", "2027-03-05 10:00", "on the 5th of march at 10am"},
        {"sept 1st", "", "2027-09-01 09:00?", "sept 1st"},
        {"nov 21 party", "Party", "2026-11-21 09:00?", "nov 21"},
        {"24 dec at 6pm presents", "Presents", "2026-12-24 18:00", "24 dec at 6pm"},
        {"on the 31st pay rent", "Pay rent", "2026-12-31 09:00?", "on the 31st"},
        {"the 20th", "", "2026-12-20 09:00?", "the 20th"},
        {"the 21st at 8am", "", "2026-11-21 08:00", "the 21st at 8am"},
    };
    check({}, rows);
}

TEST(ReminderPhrase, times)
{
    const Row rows[] = {
        {"at 5", "", "2026-11-21 17:00, 2026-11-22 05:00", "at 5"},
        {"at 5pm", "", "2026-11-21 17:00", "at 5pm"},
        {"at 17:00", "", "2026-11-21 17:00", "at 17:00"},
        {"5 p.m. tea", "Tea", "2026-11-21 17:00", "5 p.m."},
        {"by 5.30 a.m. leave", "Leave", "2026-11-22 05:30", "by 5.30 a.m."},
        {"at 11:15 call", "Call", "2026-11-21 11:15, 2026-11-21 23:15", "at 11:15"},
        {"12am", "", "2026-11-22 00:00", "12am"},
        {"12pm", "", "2026-11-21 12:00", "12pm"},
        {"at 12", "", "2026-11-21 12:00", "at 12"},
        {"at 0:30", "", "2026-11-22 00:30", "at 0:30"},
        {"at 13pm", "", "2026-11-21 13:00", "at 13pm"},
        {"noon", "", "2026-11-21 12:00", "noon"},
        {"at midday eat", "Eat", "2026-11-21 12:00", "at midday"},
        {"midnight", "", "2026-11-22 00:00", "midnight"},
        {"midnight tonight", "", "2026-11-22 00:00", "midnight tonight"},
        {"tomorrow at midnight", "", "2026-11-22 00:00", "tomorrow at midnight"},
        {"today at midnight", "", "2026-11-21 00:00", "today at midnight"},
        {"tonight at 12 sleep", "Sleep", "2026-11-22 00:00", "tonight at 12"},
        {"tonight at 12:30", "", "2026-11-22 00:30", "tonight at 12:30"},
        {"tonight at 12am", "", "2026-11-22 00:00", "tonight at 12am"},
        {"tonight at 8 call", "Call", "2026-11-21 20:00", "tonight at 8"},
        {"tomorrow night at 12", "", "2026-11-23 00:00", "tomorrow night at 12"},
        {"at 10am", "", "2026-11-22 10:00", "at 10am"},
        {"today at 5", "", "2026-11-21 05:00, 2026-11-21 17:00", "today at 5"},
        {"today at 9am", "", "2026-11-21 09:00", "today at 9am"},
        {"tomorrow at 5 to call the dentist", "Call the dentist", "2026-11-22 05:00, 2026-11-22 17:00",
            "tomorrow at 5"},
        {"tomorrow at 8 in the evening dinner", "Dinner", "2026-11-22 20:00", "tomorrow at 8 in the evening"},
        {"tomorrow at 12 in the morning", "", "2026-11-22 00:00", "tomorrow at 12 in the morning"},
        {"8am in the morning run", "Run", "2026-11-22 08:00", "8am in the morning"},
        {"at 7pm cook the evening meal", "Cook the evening meal", "2026-11-21 19:00", "at 7pm"},
        {"buy 3.99 milk at 5pm", "Buy 3.99 milk", "2026-11-21 17:00", "at 5pm"},
        {"at 5 the plumber", "The plumber", "2026-11-21 17:00, 2026-11-22 05:00", "at 5"},
        {"by 5 study days", "Study days", "2026-11-21 17:00, 2026-11-22 05:00", "by 5"},
        {"@5 lunch", "Lunch", "2026-11-21 17:00, 2026-11-22 05:00", "@5"},
        {"lunch@ 5", "Lunch", "2026-11-21 17:00, 2026-11-22 05:00", "@ 5"},
        {"tomorrow at 25:00 x", "25:00 x", "2026-11-22 09:00?", "tomorrow"},
        {"at ５pm", "", "2026-11-21 17:00", "at ５pm"},
    };
    check({}, rows);
}

TEST(ReminderPhrase, offsetsAndRepeats)
{
    const Row rows[] = {
        {"remind me in half an hour to stretch", "Stretch", "2026-11-21 11:00", "in half an hour"},
        {"in half an week", "", "2026-11-21 11:00", "in half an week"},
        {"in 13 minutes", "", "2026-11-21 10:43", "in 13 minutes"},
        {"in an hour", "", "2026-11-21 11:30", "in an hour"},
        {"in forty-five mins tea", "Tea", "2026-11-21 11:15", "in forty-five mins"},
        {"in 2 weeks", "", "2026-12-05 10:30", "in 2 weeks"},
        {"in a day call", "Call", "2026-11-22 10:30", "in a day"},
        {"in 2 days at 5pm call", "Call", "2026-11-23 17:00", "in 2 days at 5pm"},
        {"in 3 days in the morning", "", "2026-11-24 09:00", "in 3 days in the morning"},
        {"in 20 minutes ask about tomorrow at 5", "Ask about tomorrow at 5", "2026-11-21 10:50", "in 20 minutes"},
        {"in 0 minutes", "", "2026-11-21 10:30", "in 0 minutes"},
        {"every Monday take the bins out", "Take the bins out", "2026-11-23 09:00?", "every Monday", "weekly:2"},
        {"every monday at 8 run", "Run", "2026-11-23 08:00, 2026-11-23 20:00", "every monday at 8", "weekly:2"},
        {"every saturday at 11am", "", "2026-11-21 11:00", "every saturday at 11am", "weekly:7"},
        {"every saturday at 10am", "", "2026-11-28 10:00", "every saturday at 10am", "weekly:7"},
        {"every monday morning swim", "Swim", "2026-11-23 09:00", "every monday morning", "weekly:2"},
        {"each day at 9pm", "", "2026-11-21 21:00", "each day at 9pm", "daily"},
        {"every morning at 7 pills", "Pills", "2026-11-22 07:00", "every morning at 7", "daily"},
        {"every night read", "Read", "2026-11-21 20:00", "every night", "daily"},
        {"every weekday at 8am standup", "Standup", "2026-11-23 08:00", "every weekday at 8am", "weekdays"},
        {"weekly review on friday", "Review", "2026-11-27 09:00?", "weekly on friday", "weekly:6"},
        {"every month on the 31st rent", "Rent", "2026-12-31 09:00?", "every month on the 31st", "monthly:31"},
        {"monthly", "", "2026-11-22 09:00?", "monthly", "monthly:22"},
        {"yearly on march 5 birthday", "Birthday", "2027-03-05 09:00?", "yearly march 5", "yearly"},
        // Whoever names the day first wins, and only words that were used are cut.
        {"every monday and wednesday gym", "And wednesday gym", "2026-11-23 09:00?", "every monday", "weekly:2"},
        {"the cat sat on the mat tomorrow", "The cat sat on the mat", "2026-11-22 09:00?", "tomorrow"},
        {"tomorrow or on friday", "Or on friday", "2026-11-22 09:00?", "tomorrow"},
    };
    check({}, rows);
}

TEST(ReminderPhrase, tasks)
{
    const Row rows[] = {
        {"Hey Quorvell, can you remind me to call mum at 6pm on", "Call mum", "2026-11-21 18:00", "at 6pm"},
        {"REMIND ME TO BUY MILK TOMORROW EVENING", "BUY MILK", "2026-11-22 18:00", "TOMORROW EVENING"},
        {"please set a reminder for 6pm  to\tleave", "Leave", "2026-11-21 18:00", "6pm"},
        {"Reminder: to pay, tomorrow!", "Pay", "2026-11-22 09:00?", "tomorrow"},
        {"remind me tomorrow", "", "2026-11-22 09:00?", "tomorrow"},
        {"remind me that - tomorrow - the cat eats -.", "The cat eats", "2026-11-22 09:00?", "tomorrow"},
        {"🎂 bake a cake tomorrow at 5 p.m.", "🎂 bake a cake", "2026-11-22 17:00", "tomorrow at 5 p.m."},
        {"İş tomorrow ẞig meeting at 5pm ẞ", "İş ẞig meeting ẞ", "2026-11-22 17:00", "tomorrow at 5pm"},
        {"ürlaub planen in 2 wee\u212As", "Ürlaub planen", "2026-12-05 10:30", "in 2 wee\u212As"},
        {"\u00A0tomorrow\u2003at\u00A05pm\u3000茶", "茶", "2026-11-22 17:00", "tomorrow at\u00A05pm"},
        {"bad \xff byte tomorrow", "Bad \uFFFD byte", "2026-11-22 09:00?", "tomorrow"},
    };
    check({}, rows);
}

TEST(ReminderPhrase, yearEndsLeapDaysAndClockChanges)
{
    const Row atYearEnd[] = {
        {"tomorrow at 9am", "", "2027-01-01 09:00", "tomorrow at 9am"},
        {"at 5am", "", "2027-01-01 05:00", "at 5am"},
        {"jan 1", "", "2027-01-01 09:00?", "jan 1"},
        {"in 2 hours", "", "2027-01-01 01:30", "in 2 hours"},
        {"the 30th", "", "2027-01-30 09:00?", "the 30th"},
        {"next week", "", "2027-01-07 09:00?", "next week"},
    };
    check({"UTC", "2026-12-31T23:30:00.000Z"}, atYearEnd);
    const Row beforeLeapDay[] = {
        {"tomorrow", "", "2028-02-29 09:00?", "tomorrow"},
        {"feb 29", "", "2028-02-29 09:00?", "feb 29"},
        {"the 29th", "", "2028-02-29 09:00?", "the 29th"},
        {"the 30th", "", "2028-03-30 09:00?", "the 30th"},
    };
    check({"America/New_York", "2028-02-28T12:00:00.000Z"}, beforeLeapDay);
    // Berlin's clocks go from 2:00 to 3:00 on 29 March 2026, and back from 3:00 to 2:00 on 25 October.
    const Row beforeSpring[] = {
        {"tomorrow at 2:30am", "", "2026-03-29 03:30", "tomorrow at 2:30am"},
        {"in 24 hours", "", "2026-03-29 13:00", "in 24 hours"},
        {"in 1 day", "", "2026-03-29 12:00", "in 1 day"},
    };
    check({"Europe/Berlin", "2026-03-28T11:00:00.000Z"}, beforeSpring);
    const auto twice = ReminderPhrase::parse("tomorrow at 2:30am", *parseIsoText("2026-10-24T10:00:00Z"), calendar);
    ASSERT_TRUE(twice);
    EXPECT_EQ(isoText(twice->date), "2026-10-25T00:30:00.000Z");
}

TEST(ReminderPhrase, findsNoTime)
{
    for (const char* text : {"", " ", "remind me to buy milk", "in thirteen minutes", "at 5%", "at 5 %", "at 5th",
             "at 5 minutes", "at 24:00", "at 5:60", "@5:60", "at 24", "31 april", "feb 30", "february 29", "the 32nd",
             "the 0th", "5 minutes before", "sunny", "monkey", "marching 40", "someday", "todays", "at five", "every",
             "in", "in 99999999999999999999 days", "in 999999999 weeks", "in 2 years", "next month", "\xff\xfe"})
        EXPECT_EQ(ReminderPhrase::parse(text, now, calendar), std::nullopt) << text;
    EXPECT_EQ(ReminderPhrase::parse("tomorrow", Instant::max(), calendar), std::nullopt);
    EXPECT_EQ(ReminderPhrase::parse("tomorrow", Instant::min(), calendar), std::nullopt);
}

TEST(ReminderPhrase, longTextsHoldUpNobody)
{
    const auto repeated = [](std::string_view piece, std::size_t size) {
        std::string text;
        while (text.size() < size)
            text += piece;
        return text;
    };
    for (const char* piece :
        {"a", " ", "at ", "99:99 ", "in 1", "on the 1 ", "every ", "jan ", "é ", "ẞ5", "1", "\xff"}) {
        SCOPED_TRACE(piece);
        EXPECT_FALSE(ReminderPhrase::parse(repeated(piece, ReminderPhrase::maximumBytes + 1), now, calendar));
        const auto phrase = ReminderPhrase::parse(repeated(piece, 200'000) + " tomorrow at 5pm", now, calendar);
        EXPECT_TRUE(phrase && phrase->timeWords.ends_with("tomorrow at 5pm"));
    }
}

TEST(ReminderPhrase, isReadFromAnyThread)
{
    const char* text = "Hey Quorvell, remind me every monday at 5 in the evening to see the 🎂 at 5%";
    const auto expected = ReminderPhrase::parse(text, now, calendar);
    std::atomic<int> failures = 0;
    std::vector<std::jthread> threads;
    for (int index = 0; index < 4; ++index)
        threads.emplace_back([&] {
            for (int round = 0; round < 200; ++round)
                failures += ReminderPhrase::parse(text, now, calendar) == expected ? 0 : 1;
        });
    threads.clear();
    EXPECT_EQ(failures, 0);
}

TEST(ReminderPhrase, asJson)
{
    EXPECT_EQ(dumpJson(phraseJson(ReminderPhrase::parse("every monday at 5 run", now, calendar))),
        R"({"task":"Run","date":"2026-11-23T04:00:00.000Z","hasTime":true,"alternatives":["2026-11-23T16:00:00.000Z"],)"
        R"("repeatRule":"weekly:2","timeWords":"every monday at 5","isAmbiguous":true})");
    EXPECT_EQ(dumpJson(phraseJson(ReminderPhrase::parse("tomorrow", now, calendar))),
        R"({"task":"","date":"2026-11-22T08:00:00.000Z","hasTime":false,"alternatives":[],"repeatRule":null,)"
        R"("timeWords":"tomorrow","isAmbiguous":false})");
    EXPECT_EQ(dumpJson(phraseJson(std::nullopt)), "null");
}

} // namespace
} // namespace quorvell
