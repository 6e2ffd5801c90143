// SPDX-License-Identifier: MIT
// Catches days, times and repeats misunderstood in a phrase, and texts that take too long.
#include "QuorvellCore/reminders/phrase/ReminderPhrase.h"

#include "FixtureTable.h"
#include "QuorvellCore/reminders/calendar/DateParts.h"
#include "QuorvellCore/reminders/phrase/ReminderPhraseJson.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <atomic>
#include <thread>
#include <vector>

namespace quorvell {
namespace {

const Calendar calendar = *Calendar::create("Europe/Berlin", "en_US");
const Instant now = *parseIsoText("2026-11-21T09:30:00Z"); ///< Saturday, 10:30 in Berlin.

/// "Call mum | 2026-11-22 09:00? | tomorrow": task, date with its alternatives, words of the time, and the rule if
/// there is one. A day without a time has "?".
std::string shown(const std::string& text, Instant at, const Calendar& user)
{
    const auto phrase = ReminderPhrase::parse(text, at, user);
    if (!phrase)
        return "no time";
    std::string dates = DateParts::from(phrase->date, user).text() + (phrase->hasTime ? "" : "?");
    for (const Instant alternative : phrase->alternatives)
        dates += ", " + DateParts::from(alternative, user).text();
    return phrase->task + " | " + dates + " | " + phrase->timeWords
        + (phrase->repeatRule ? " | " + phrase->repeatRule->stored() : "");
}

TEST(ReminderPhrase, findsTaskTimeAndRule)
{
    EXPECT_EQ(shown("bad \xff byte tomorrow", now, calendar), "Bad \uFFFD byte | 2026-11-22 09:00? | tomorrow");
    for (const auto& row : test::fixtureRows("reminders/phrases.txt", 2))
        EXPECT_EQ(shown(row.lines[0], now, calendar), row.lines[1]) << row.name << ": " << row.lines[0];
}

TEST(ReminderPhrase, yearEndsLeapDaysAndClockChanges)
{
    struct Row {
        const char* zone;
        const char* now;
        const char* text;
        const char* date;
    };
    constexpr const char* yearEnd = "2026-12-31T23:30:00.000Z";
    constexpr const char* leapDay = "2028-02-28T12:00:00.000Z";
    // Berlin's clocks go from 2:00 to 3:00 on 29 March 2026, and back from 3:00 to 2:00 on 25 October.
    constexpr const char* spring = "2026-03-28T11:00:00.000Z";
    const Row rows[] = {
        {"UTC", yearEnd, "tomorrow at 9am", "2027-01-01 09:00"},
        {"UTC", yearEnd, "at 5am", "2027-01-01 05:00"},
        {"UTC", yearEnd, "jan 1", "2027-01-01 09:00?"},
        {"UTC", yearEnd, "in 2 hours", "2027-01-01 01:30"},
        {"UTC", yearEnd, "the 30th", "2027-01-30 09:00?"},
        {"UTC", yearEnd, "next week", "2027-01-07 09:00?"},
        {"America/New_York", leapDay, "tomorrow", "2028-02-29 09:00?"},
        {"America/New_York", leapDay, "feb 29", "2028-02-29 09:00?"},
        {"America/New_York", leapDay, "the 29th", "2028-02-29 09:00?"},
        {"America/New_York", leapDay, "the 30th", "2028-03-30 09:00?"},
        {"Europe/Berlin", spring, "tomorrow at 2:30am", "2026-03-29 03:30"},
        {"Europe/Berlin", spring, "in 24 hours", "2026-03-29 13:00"},
        {"Europe/Berlin", spring, "in 1 day", "2026-03-29 12:00"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(shown(row.text, *parseIsoText(row.now), *Calendar::create(row.zone, "en_US")),
            std::string(" | ") + row.date + " | " + row.text);
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
