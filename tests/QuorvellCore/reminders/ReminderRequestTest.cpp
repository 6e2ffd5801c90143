// SPDX-License-Identifier: MIT
// Catches requests for a reminder that guess where they should ask.
#include "QuorvellCore/reminders/ReminderRequest.h"

#include "QuorvellCore/reminders/DateParts.h"
#include "QuorvellCore/reminders/SpokenTimes.h"

#include <gtest/gtest.h>

namespace quorvell {
namespace {

using Verdict = ReminderRequest::Verdict;

TEST(ReminderRequest, fromWords)
{
    struct Row {
        const char* words;
        Verdict verdict;
        const char* task;
        const char* date = ""; ///< Or the choices.
    };
    const Row rows[] = {
        {"remind me tomorrow at 5 pm to call mum", Verdict::ready, "Call mum", "2026-11-22 17:00"},
        {"tomorrow call mum", Verdict::ready, "Call mum", "2026-11-22 09:00"},
        {"tomorrow at 5 call mum", Verdict::whichTime, "Call mum", "2026-11-22 05:00, 2026-11-22 17:00"},
        {"remind me at 5", Verdict::whichTime, "", "2026-11-21 17:00, 2026-11-22 05:00"},
        {"today at 5 call mum", Verdict::ready, "Call mum", "2026-11-21 17:00"}, // Five in the morning is over.
        {"today at 9am call mum", Verdict::pastTime, "Call mum", "2026-11-21 09:00"},
        {"today call mum", Verdict::pastTime, "Call mum", "2026-11-21 09:00"},
        {"tomorrow at 5pm", Verdict::needsTask, "", "2026-11-22 17:00"},
        {"remind me to buy milk", Verdict::needsTime, "Buy milk"},
        {"remind me", Verdict::needsTime, ""},
        {"", Verdict::needsTime, ""},
        // Days and times that were passed over must not be lost silently.
        {"31 april at 5pm pay rent", Verdict::needsTime, "Pay rent"},
        {"feb 29 at noon party", Verdict::needsTime, "Party"},
        {"every monday and wednesday at 8am gym", Verdict::needsTime, "Gym"},
        {"every other monday at 6pm call mum", Verdict::needsTime, "Call mum"},
        {"call mum every second monday at 6pm", Verdict::needsTime, "Call mum"},
        {"tomorrow thank every other guest", Verdict::ready, "Thank every other guest", "2026-11-22 09:00"},
        {"at 5pm yesterday call mum", Verdict::needsTime, "Call mum"},
        {"tomorrow yesterday's mail", Verdict::ready, "Yesterday's mail", "2026-11-22 09:00"},
        {"tomorrow at 25:00 call mum", Verdict::needsTime, "Call mum"},
        {"tomorrow buy 40 marshmallows", Verdict::ready, "Buy 40 marshmallows", "2026-11-22 09:00"},
        {"tomorrow prepare the 5 march deadline", Verdict::ready, "Prepare the 5 march deadline", "2026-11-22 09:00"},
        {"tomorrow buy 3.99 milk", Verdict::ready, "Buy 3.99 milk", "2026-11-22 09:00"},
        // What cutting the time words leaves behind.
        {"remind me the day after tomorrow to call mum", Verdict::ready, "Call mum", "2026-11-23 09:00"},
        {"the day after tomorrow at noon call mum", Verdict::ready, "Call mum", "2026-11-23 12:00"},
        {"lunch @5pm", Verdict::ready, "Lunch", "2026-11-21 17:00"},
        {"at 5pm, remind me to call mum", Verdict::ready, "Call mum", "2026-11-21 17:00"},
        {"tomorrow at noon the plumber comes", Verdict::ready, "The plumber comes", "2026-11-22 12:00"},
        // Times in words.
        {"tomorrow at half past five pm call mum", Verdict::ready, "Call mum", "2026-11-22 17:30"},
        {"tomorrow at five call mum", Verdict::whichTime, "Call mum", "2026-11-22 05:00, 2026-11-22 17:00"},
        {"remind me at 6 o'clock tonight to cook", Verdict::ready, "Cook", "2026-11-21 18:00"},
    };
    const auto calendar = *Calendar::create("Europe/Berlin", "en_US");
    const Instant now = *parseIsoText("2026-11-21T09:30:00Z");
    for (const Row& row : rows) {
        SCOPED_TRACE(row.words);
        const auto request = ReminderRequest::fromWords(row.words, now, calendar);
        EXPECT_EQ(request.verdict, row.verdict);
        EXPECT_EQ(request.task, row.task);
        std::string dates = request.date == Instant() ? "" : DateParts::from(request.date, calendar).text();
        for (std::size_t index = 1; index < request.choices.size(); ++index)
            dates += ", " + DateParts::from(request.choices[index], calendar).text();
        EXPECT_EQ(dates, row.date);
    }
}

TEST(ReminderRequest, aRepeatThatIsPastMovesOn)
{
    const auto calendar = *Calendar::create("Europe/Berlin", "en_US");
    const Instant now = *parseIsoText("2026-11-21T09:30:00Z");
    const Instant past = *parseIsoText("2026-11-20T08:00:00Z");
    const auto daily = ReminderRequest::settled("Run", past, true, ReminderRepeat::daily(), now, calendar);
    EXPECT_EQ(daily.verdict, Verdict::ready);
    EXPECT_EQ(isoText(daily.date), "2026-11-22T08:00:00.000Z");
    EXPECT_EQ(ReminderRequest::settled("Run", past, true, {}, now, calendar).verdict, Verdict::pastTime);
    EXPECT_EQ(ReminderRequest::settled("", now, true, {}, now, calendar).verdict, Verdict::needsTask);
}

TEST(SpokenTimes, areWritten)
{
    struct Row {
        const char* spoken;
        const char* written;
    };
    const Row rows[] = {
        {"at five", "at 5"},
        {"By Five thirty call", "By 5:30 call"},
        {"at seven oh five", "at 7:05"},
        {"at eight forty-five pm", "at 8:45 pm"},
        {"five pm and six p.m.", "5 pm and 6 pm"},
        {"ten a m", "10 am"},
        {"half past two", "at 2:30"},
        {"at quarter to one", "at 12:45"},
        {"at ten past 6", "at 6:10"},
        {"at a quarter past twelve", "at 12:15"},
        {"5 o'clock", "at 5"},
        {"by six oclock tomorrow", "by 6 tomorrow"},
        {"at twelve o’clock", "at 12"},
        // Not times.
        {"look at three houses", "look at three houses"},
        {"at one of the shops", "at one of the shops"},
        {"one by one tomorrow", "one by one tomorrow"},
        {"at one point", "at one point"},
        {"at five percent", "at five percent"},
        {"ten to twelve people", "ten to twelve people"},
        {"half to five", "half to five"},
        {"in five minutes", "in five minutes"},
        {"at 5", "at 5"},
        {"İ five amazing", "İ five amazing"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(withWrittenTimes(row.spoken), row.written);
}

} // namespace
} // namespace quorvell
