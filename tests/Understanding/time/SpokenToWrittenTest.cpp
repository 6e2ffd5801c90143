// SPDX-License-Identifier: MIT
// Catches spoken times written wrongly, and other words taken for times.
#include "Understanding/time/SpokenToWritten.h"

#include <gtest/gtest.h>

#include <string>

namespace quorvell {

TEST(SpokenToWritten, writesTimesAsReadersOfTimesExpectThem)
{
    const std::pair<const char*, const char*> rows[] = {
        {"remind me tomorrow at five p.m. to call the dentist", "remind me tomorrow at 5 pm to call the dentist"},
        {"at five p m", "at 5 pm"}, {"at seven am to go running", "at 7 am to go running"},
        {"five thirty p.m.", "5:30 pm"}, {"at seven oh five", "at 7:05"}, {"seven oh five", "7:05"},
        {"tomorrow five forty two", "tomorrow 5:42"}, {"half past six", "6:30"},
        {"on friday at half past three in the afternoon", "on friday at 3:30 in the afternoon"},
        {"quarter to seven in the evening", "6:45 in the evening"},
        {"a quarter past nine in the morning", "9:15 in the morning"}, {"at quarter to one", "at 12:45"},
        {"at twenty to three", "at 2:40"}, {"at ten minutes past eleven", "at 11:10"},
        {"twenty five past four", "4:25"}, {"at nine o'clock", "at 9"},
        {"move number two to eight pm", "move number two to 8 pm"}, {"five o'clock", "at 5"},
        {"at six o'clock p.m.", "at 6 pm"}, {"by noon tomorrow", "by noon tomorrow"}, {"at twelve noon", "at noon"},
        {"at around nine", "at 9"}, {"at about eight thirty", "at 8:30"},
        {"seven in the evening", "at 7 in the evening"}, {"at twelve thirty at night", "at 12:30 am"},
        {"at ten at night", "at 10 at night"}, {"at seventeen hundred", "at 17:00"},
        {"at seventeen thirty", "at 17:30"}, {"twenty one fifteen", "21:15"},
        {"in twenty five minutes", "in 25 minutes"}, {"in thirteen minutes", "in 13 minutes"},
        {"in half an hour", "in half an hour"}, {"in an hour and a half", "in 90 minutes"},
        {"in two and a half hours", "in 150 minutes"}, {"in one hour and ten minutes", "in 70 minutes"},
        {"in a quarter of an hour", "in 15 minutes"}, {"in a couple of hours", "in 2 hours"},
        {"twenty minutes from now", "in 20 minutes"}, {"a week from today", "in 1 week"},
        {"half an hour from now", "in 30 minutes"}, {"on march fifth", "on march 5th"},
        {"on the fifth of march", "on march 5th"}, {"on december the twelfth at two p.m.", "on december 12th at 2 pm"},
        {"march five at noon", "march 5 at noon"}, {"on the twenty first at eleven a.m.", "on the 21st at 11 am"},
        {"on the thirty first", "on the 31st"}, {"for the second of february", "for february 2nd"},
        {"every day at twenty to nine", "every day at 8:40"},
        {"Remind me at Half Past 6, please.", "Remind me at 6:30, please."},
        {"Call mum at 5 o'clock!", "Call mum at 5!"}, {"in Twenty-Five minutes: stretch", "in 25 minutes: stretch"},
        {"quarter to 7 in the evening", "6:45 in the evening"}, {"at 5 p m", "at 5 pm"},
        {"Lunch  on the Twelfth of May", "Lunch  on may 12th"}};
    for (const auto& [spoken, written] : rows) {
        EXPECT_EQ(spokenToWritten(spoken), written);
        EXPECT_EQ(spokenToWritten(written), written) << "nothing changes the second time";
    }
}

TEST(SpokenToWritten, leavesEverythingElseAlone)
{
    const char* const texts[] = {"", " ", "call five guys", "one of those", "look at one of those", "at one point",
        "one by one", "find the second one", "read the first one", "on the second floor", "the first time",
        "by two people", "the garage code is four seven one two", "twenty questions", "give a quarter to six people",
        "buy two books and three apples", "from five to six people", "move the second one to eight",
        "you may first call anna", "one day i will", "i need one hundred eggs", "at 5pm", "at 5 pm", "5:30", "at 17:00",
        "at 5", "in 20 minutes", "on the 21st", "march 5th", "5.30pm", "at 9 am i leave", "2026-11-22 17:00",
        "half an hour", "in an hour", "second thoughts", "one hour of yoga", "half of it", "call me at 555 1234",
        "at ten houses", "Größe zwölf um fünf", "call 5 o", "in a minute", "the third quarter", "quarter", "half past",
        "at", "the fifth of", "a.m."};
    for (const char* text : texts)
        EXPECT_EQ(spokenToWritten(text), text);
}

} // namespace quorvell
