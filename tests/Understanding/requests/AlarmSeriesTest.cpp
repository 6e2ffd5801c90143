// SPDX-License-Identifier: MIT
// Catches alarms of one request that ring at another hour or day than was said, and words that are taken for several.
#include "Understanding/skills/alarms/AlarmSeries.h"

#include "RuleBench.h"
#include "Understanding/skills/alarms/AlarmRule.h"

#include <gtest/gtest.h>

namespace quorvell {

TEST(AlarmSeries, hasTheHoursAndDaysThatWereSaid)
{
    struct Row {
        const char* words;
        int count;
        const char* times; ///< Empty for words that do not settle them.
    };
    // It is Saturday the 21st of November 2026, shortly before 1 PM.
    const Row rows[] = {
        {"6, 6:15 and 6:30 am", 0, "at 6 am|at 6:15 am|at 6:30 am"},
        {"11 pm and 6 am", 0, "at 11 pm|at 6 am"},
        {"tomorrow at 6 and 7", 0, "at 6 tomorrow|at 7 tomorrow"},
        {"6 on weekdays and 9 on weekends", 0, "at 6 every weekday|at 9 every saturday and sunday"},
        {"6 am for gym and 7 am", 0, "at 6 am for gym|at 7 am"},
        {"7 am monday and 8 am tuesday", 0, "at 7 am monday|at 8 am tuesday"},
        {"6 and 7", 3, ""},
        {"10 minutes apart from 6:50 am tomorrow", 3, "at 6:50 am tomorrow|at 7 am tomorrow|at 7:10 am tomorrow"},
        {"10 minutes apart from 6", 0, ""},
        {"every 30 minutes from 6 to 7 am", 0, "at 6 am|at 6:30 am|at 7 am"},
        {"thursday and friday at 7 am", 0, "at 7 am thursday|at 7 am friday"},
        {"9 am for the next 2 days", 0, "at 9 am on 2026-11-22|at 9 am on 2026-11-23"},
        {"7 pm until monday", 0, "at 7 pm on 2026-11-21|at 7 pm on 2026-11-22|at 7 pm on 2026-11-23"},
    };
    for (const auto& [words, count, wanted] : rows) {
        EXPECT_TRUE(count > 1 || AlarmSeries::isMeant(words)) << words;
        std::string joined;
        for (const std::string& time : AlarmSeries::times(words, count, withCalendar()))
            joined += (joined.empty() ? "" : "|") + time;
        EXPECT_EQ(joined, wanted) << words;
    }
    for (const char* one : {"6 am for me and Ana", "between 6 and 7", "6 am every monday and friday", "7 am"})
        EXPECT_FALSE(AlarmSeries::isMeant(one)) << one;
}

TEST(AlarmRule, saysTheDaysInFull)
{
    const std::pair<const char*, const char*> rows[] = {
        {"6:05 Monday to Thursday", "6:05 every monday, tuesday, wednesday and thursday"},
        {"at 6 mon - fri", "at 6 every weekday"},
        {"at 7 except weekends", "at 7 every weekday"},
        {"every day but sunday at 7", "every monday, tuesday, wednesday, thursday, friday and saturday at 7"},
        {"weekly on friday 5 pm", "every friday 5 pm"},
        {"in the sun at 7", "in the sun at 7"},
    };
    for (const auto& [words, wanted] : rows)
        EXPECT_EQ(AlarmRule::inTime(words), wanted) << words;
}

} // namespace quorvell
