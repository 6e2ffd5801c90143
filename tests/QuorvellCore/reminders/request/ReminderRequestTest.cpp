// SPDX-License-Identifier: MIT
// Catches requests for a reminder that guess where they should ask.
#include "QuorvellCore/reminders/request/ReminderRequest.h"

#include "QuorvellCore/reminders/calendar/DateParts.h"
#include "QuorvellCore/reminders/calendar/ReminderWords.h"
#include "QuorvellCore/reminders/spoken/SpokenTimes.h"

#include <gtest/gtest.h>

#include <span>
#include <string>

namespace quorvell {
namespace {

using Verdict = ReminderRequest::Verdict;

struct Request {
    const char* words;
    Verdict verdict;
    const char* task;
    const char* date = ""; ///< Or the choices.
};

void check(std::span<const Request> rows)
{
    const auto calendar = *Calendar::create("Europe/Berlin", "en_US");
    const Instant now = *parseIsoText("2026-11-21T09:30:00Z"); // A Saturday.
    for (const Request& row : rows) {
        SCOPED_TRACE(row.words);
        const auto request = ReminderRequest::fromWords(row.words, now, calendar);
        EXPECT_EQ(request.verdict, row.verdict);
        EXPECT_EQ(request.task, row.task);
        std::string dates = request.date == Instant() ? "" : DateParts::from(request.date, calendar).text();
        for (std::size_t index = 1; index < request.choices.size(); ++index)
            dates += ", " + DateParts::from(request.choices[index], calendar).text();
        if (request.repeatRule)
            dates += " " + request.repeatRule->stored();
        EXPECT_EQ(dates, row.date);
    }
}

TEST(ReminderRequest, fromWords)
{
    const Request rows[] = {
        {"remind me tomorrow at 5 pm to call mum", Verdict::ready, "Call mum", "2026-11-22 17:00"},
        {"tomorrow call mum", Verdict::ready, "Call mum", "2026-11-22 09:00"},
        {"tomorrow at 5 call mum", Verdict::whichTime, "Call mum", "2026-11-22 05:00, 2026-11-22 17:00"},
        {"remind me at 5", Verdict::whichTime, "", "2026-11-21 17:00, 2026-11-22 05:00"},
        {"today at 5 call mum", Verdict::ready, "Call mum", "2026-11-21 17:00"}, // Five in the morning is over.
        {"today at 9am call mum", Verdict::pastTime, "Call mum", "2026-11-21 09:00"},
        {"today call mum", Verdict::needsTime, "Call mum"}, // Nobody said nine.
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
        {"can you please remind me to call mum tomorrow at 5 pm?", Verdict::ready, "Call mum", "2026-11-22 17:00"},
        {"Don't let me forget to call mum tomorrow at 5 pm, please", Verdict::ready, "Call mum", "2026-11-22 17:00"},
        {"call mum tomorrow at 5 pm please", Verdict::ready, "Call mum", "2026-11-22 17:00"},
        {"tomorrow say please", Verdict::ready, "Say please", "2026-11-22 09:00"},
        {"tomorrow please the boss", Verdict::ready, "Please the boss", "2026-11-22 09:00"},
        // Times in words.
        {"tomorrow at half past five pm call mum", Verdict::ready, "Call mum", "2026-11-22 17:30"},
        {"tomorrow at five call mum", Verdict::whichTime, "Call mum", "2026-11-22 05:00, 2026-11-22 17:00"},
        {"remind me at 6 o'clock tonight to cook", Verdict::ready, "Cook", "2026-11-21 18:00"},
    };
    check(rows);
}

TEST(ReminderRequest, readsDaysNamedInMoreThanOneWord)
{
    const Request rows[] = {
        {"call mum on saturday 20 march at 8 pm", Verdict::ready, "Call mum", "2027-03-20 20:00"},
        {"call mum on Saturday, March 20 at 8 PM", Verdict::ready, "Call mum", "2027-03-20 20:00"},
        {"Wednesday the 9th of December at noon call mum", Verdict::ready, "Call mum", "2026-12-09 12:00"},
        {"call mum at noon on 9 december (wednesday)", Verdict::ready, "Call mum", "2026-12-09 12:00"},
        {"friday the 27th call mum", Verdict::ready, "Call mum", "2026-11-27 09:00"},
        {"tomorrow, 22 november, at 8 pm call mum", Verdict::ready, "Call mum", "2026-11-22 20:00"},
        {"call mum on 20 march 2028 at 8 pm", Verdict::ready, "Call mum", "2028-03-20 20:00"},
        {"march 20th, 2028 call mum", Verdict::ready, "Call mum", "2028-03-20 09:00"},
        {"call mum on 20 march 2026 at 8 pm", Verdict::pastTime, "Call mum", "2026-03-20 20:00"},
        {"2027-03-20 at 8 pm call mum", Verdict::ready, "Call mum", "2027-03-20 20:00"},
        {"on december fifth at 5 pm call mum", Verdict::ready, "Call mum", "2026-12-05 17:00"},
        {"the twenty first of march call mum", Verdict::ready, "Call mum", "2027-03-21 09:00"},
        {"pay rent on the first of every month", Verdict::ready, "Pay rent", "2026-12-01 09:00 monthly:1"},
        {"gym on mondays at 8 am", Verdict::ready, "Gym", "2026-11-23 08:00 weekly:2"},
        {"gym everyday at 8 am", Verdict::ready, "Gym", "2026-11-22 08:00 daily"},
        {"in an hour and a half call mum", Verdict::ready, "Call mum", "2026-11-21 12:00"},
        {"call mum in 2 hours and 30 minutes", Verdict::ready, "Call mum", "2026-11-21 13:00"},
        {"call mum in one and a half hours", Verdict::ready, "Call mum", "2026-11-21 12:00"},
        {"call mum in about twenty five minutes", Verdict::ready, "Call mum", "2026-11-21 10:55"},
        {"call mum in two weeks' time", Verdict::ready, "Call mum", "2026-12-05 10:30"},
        {"call mum 20 minutes from now", Verdict::ready, "Call mum", "2026-11-21 10:50"},
        {"tomorrow at a quarter past 3pm call mum", Verdict::ready, "Call mum", "2026-11-22 15:15"},
        {"tomorrow half past 3 call mum", Verdict::whichTime, "Call mum", "2026-11-22 03:30, 2026-11-22 15:30"},
        {"tomorrow at 12 noon call mum", Verdict::ready, "Call mum", "2026-11-22 12:00"},
        {"tomorrow around 5 pm call mum", Verdict::ready, "Call mum", "2026-11-22 17:00"},
        {"tomorrow 7 in the evening call mum", Verdict::ready, "Call mum", "2026-11-22 19:00"},
        {"can you remind me to call mum tomorrow?", Verdict::ready, "Call mum", "2026-11-22 09:00"},
        {"buy 2 pm tickets tomorrow at 5 pm", Verdict::ready, "Buy 2 pm tickets", "2026-11-22 17:00"},
        {"remind me by friday to call mum", Verdict::ready, "Call mum", "2026-11-27 09:00"},
        {"sun 5 pm call mum", Verdict::ready, "Call mum", "2026-11-22 17:00"},
        {"call mum weds 5pm", Verdict::ready, "Call mum", "2026-11-25 17:00"},
        {"call mum 2moro 5pm", Verdict::ready, "Call mum", "2026-11-22 17:00"},
        {"tomorrow see how Anna weds Bob", Verdict::ready, "See how Anna weds Bob", "2026-11-22 09:00"},
        {"call mum on the morning of the 5th", Verdict::ready, "Call mum", "2026-12-05 09:00"},
        {"pay rent every month on the 1st", Verdict::ready, "Pay rent", "2026-12-01 09:00 monthly:1"},
        {"tonight at 1 am call mum", Verdict::ready, "Call mum", "2026-11-22 01:00"},
        {"today at midnight call mum", Verdict::ready, "Call mum", "2026-11-22 00:00"},
        {"tomorrow at midnight call mum", Verdict::whichTime, "Call mum", "2026-11-22 00:00, 2026-11-23 00:00"},
        {"remind me to ask Bob tomorrow: who comes?", Verdict::ready, "Ask Bob : who comes", "2026-11-22 09:00"},
    };
    check(rows);
}

TEST(ReminderRequest, asksWhereATimeWasPassedOver)
{
    const char* rows[] = {
        // Days that do not agree, or are several.
        "call mum on sunday 20 march at 8 pm",
        "tomorrow, 23 november, call mum",
        "31 april 2027 call mum",
        "friday the 28th call mum",
        "call mum on monday or tuesday at 8 pm",
        "at 5 pm call mum yesterday",
        "every day until friday at 8 am call mum",
        "from the 10th to the 14th of december call mum",
        "call mum the last day of every month",
        "call mum on the first monday of the month at 8 am",
        "every 2 weeks call mum at 8 am",
        "call mum every weekend at 8 am",
        "call mum twice a day at 8 am",
        "call mum every week/month",
        "on 5 march 27 at 5 pm call mum",
        "this time tomorrow call mum",
        "gym on monday and set it to repeat",
        // Times.
        "at 8 am and 8 pm call mum",
        "call mum between 5 and 6 pm",
        "call mum 5-6 pm",
        "call mum before 5 pm",
        "tomorrow 5 call mum",
        "tomorrow at 1730 call mum",
        "tomorrow half 5 call mum",
        "in 2 hours tomorrow call mum",
        "in a day or two call mum",
        "in a month at 5 pm call mum",
        "an hour before my appointment at 2 pm call mum",
        "tomorrow at lunch call mum",
        // Days that the patterns do not know.
        "tomorow at 5 pm call mum",
        "call mum at 5 pm on wensday",
        "thrusday call mum at 5 pm",
        "call mum this weekend at 5 pm",
        "next month at 5 pm call mum",
        "call mum in march at 5 pm",
        "on christmas eve at 5 pm call mum",
        "on 20/3/2027 at 5 pm call mum",
        "on 5/12 at 5 pm call mum",
        "on 20.3.2027 at 5 pm call mum",
        // The time, or part of the task.
        "buy 2 pm tickets",
        "listen to 3 am radio",
        "confirm my 2pm appointment",
        "read Friday Night Lights at 5 pm",
        "print the friday report at 5 pm",
        "prepare tomorrow's meeting at 5 pm",
        "transfer 12.50 to Bob",
    };
    const auto calendar = *Calendar::create("Europe/Berlin", "en_US");
    for (const char* words : rows)
        EXPECT_EQ(ReminderRequest::fromWords(words, *parseIsoText("2026-11-21T09:30:00Z"), calendar).verdict,
            Verdict::needsTime)
            << words;
}

TEST(ReminderRequest, keepsWhatWasClearBesideWhatIsAsked)
{
    struct Row {
        const char* words;
        const char* task;
        const char* unclear;
        const char* understood; ///< Rule, day and clock.
    };
    const Row rows[] = {
        {"call mum tomorow at 5 pm", "Call mum", "tomorow", "||at 5 pm"},
        {"call mum wensday at 5", "Call mum", "wensday", "||at 5"},
        {"call mum thrusday evening", "Call mum", "thrusday", "||in the evening"},
        {"this weekend at 10:30 am call mum", "Call mum", "this weekend", "||at 10:30 am"},
        {"from the 10th to the 14th of december at 7 pm call mum", "Call mum", "from the 10th to the 14th of december",
            "||at 7 pm"},
        {"call mum on sunday 20 march at 8 pm", "Call mum", "on sunday 20 march", "||at 8 pm"},
        {"at 5 pm or 6 pm on thursday call mum", "Call mum", "or 6 pm", "|2026-11-26|"},
        {"on thursday before 5 pm call mum", "Call mum", "before 5 pm", "|2026-11-26|"},
        {"call mum every monday at 8 am and 8 pm", "Call mum", "and 8 pm", "every monday||"},
        {"every other week at 8 am call mum", "Call mum", "every other week", "||at 8 am"},
        {"call mum every month at 8 am", "Call mum", "", "every month||at 8 am"},
        {"print the friday report at 5 pm", "Print the friday report", "friday", "||at 5 pm"},
        {"remind me to call Bob at 3 pm and Sue at 4 pm", "Call Bob and Sue", "at 4 pm", "||"},
        {"at 5 pm on christmas eve call mum", "Call mum", "on christmas eve", "||at 5 pm"},
        {"on the 5/12 at 5 pm call mum", "Call mum", "on the 5/12", "||at 5 pm"},
        {"call mum on 03.12. at 4pm", "Call mum", "on 03.12", "||at 4 pm"},
        {"call mum last friday at 5pm", "Call mum last friday", "friday", "||at 5 pm"},
        {"call mum at 5 pm on 5", "Call mum", "on 5", "||at 5 pm"},
        {"call mum tomorrow morning at 11 pm", "Call mum", "tomorrow morning at 11 pm", "|2026-11-22|"},
        {"call mum tonight at 7 am", "Call mum", "tonight at 7 am", "|2026-11-21|"},
        {"call mum later today", "Call mum", "later today", "|2026-11-21|"},
        {"call mum today", "Call mum", "", "|2026-11-21|"},
        {"call mum", "Call mum", "", "||"},
    };
    const auto calendar = *Calendar::create("Europe/Berlin", "en_US");
    for (const Row& row : rows) {
        SCOPED_TRACE(row.words);
        const auto request = ReminderRequest::fromWords(row.words, *parseIsoText("2026-11-21T09:30:00Z"), calendar);
        const UnderstoodTime& clear = request.understood;
        EXPECT_EQ(request.verdict, Verdict::needsTime);
        EXPECT_EQ(request.task, row.task);
        EXPECT_EQ(request.unclear, row.unclear);
        EXPECT_EQ(clear.rule + "|" + clear.day + "|" + clear.clock, row.understood);
    }
}

TEST(ReminderRequest, tasksKeepWhatOnlyLooksLikeATime)
{
    const char* tasks[] = {
        "Buy 5 amazing apples",
        "Pay £12.50 to Bob",
        "Pay 12.50 to Bob",
        "Pay $12.50 to Bob",
        "Buy sun cream",
        "Update the sat nav",
        "Buy mon cheri",
        "Wed Anna",
        "Call 555 1234",
        "Install version 2.30",
        "Buy 1/2 cup of rice",
        "Check the 24/7 shop",
        "Bake it at 20 degrees",
        "Ask for 5.30% more",
        "March to the store",
        "Run 5 miles",
        "Buy a book about march madness",
        "Call May",
        "Read Friday Night Lights",
        "Buy 5 marshmallows",
        "Buy 12 decorations",
        "Read \"Monday at 5 pm\"",
        "Print the friday report",
        "Send the notes of last friday",
        "Prepare friday's meeting",
        "Buy the weekly magazine",
        "Cook the evening meal",
        "Say good night",
        "Go to the 5th floor",
        "Visit the second hand shop",
        "Ping 10.12.13.14",
        "Mail bob@12.com",
        "Eat a sundae",
        "Read John 3:16",
        "Thank every other guest",
        "Buy christmas presents",
        "Buy everyday shoes",
        "Plan for next month",
        "Meet at 21 Jump Street",
    };
    const auto calendar = *Calendar::create("Europe/Berlin", "en_US");
    for (const std::string task : tasks) {
        const auto request = ReminderRequest::fromWords(
            "remind me to " + task + " tomorrow", *parseIsoText("2026-11-21T09:30:00Z"), calendar);
        EXPECT_EQ(request.verdict, Verdict::ready) << task;
        EXPECT_EQ(request.task, task);
        EXPECT_EQ(DateParts::from(request.date, calendar).text(), "2026-11-22 09:00") << task;
        EXPECT_FALSE(request.repeatRule) << task;
    }
}

TEST(ReminderRequest, understandsTheDatesThatAreSpokenToTheUser)
{
    const auto calendar = *Calendar::create("Europe/Berlin", "en_US");
    const Instant now = *parseIsoText("2026-11-21T09:30:00Z");
    for (int days = 1; days < 365; days += 13) {
        const Instant date = calendar.addingDays(now, std::chrono::days(days));
        const std::string spoken = ReminderWords::spoken(date, now, calendar, calendar.locale());
        EXPECT_EQ(ReminderRequest::fromWords("call mum on " + spoken, now, calendar).date, date) << spoken;
        const auto said = ReminderRequest::fromWords("on " + spoken + " call mum", now, calendar);
        EXPECT_EQ(said.task, "Call mum") << spoken;
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
