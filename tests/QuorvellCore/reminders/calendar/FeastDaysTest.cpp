// SPDX-License-Identifier: MIT
// Catches holidays on the wrong day.
#include "QuorvellCore/reminders/calendar/FeastDays.h"

#include <gtest/gtest.h>

namespace quorvell {
namespace {

using std::chrono::sys_days;
using std::chrono::year;
using std::chrono::year_month_day;

TEST(FeastDays, areOnTheirDays)
{
    const struct Row {
        int in;
        const char* name;
        unsigned month;
        unsigned day;
    } rows[] = {
        {2024, "easter", 3, 31},
        {2025, "easter sunday", 4, 20},
        {2026, "easter", 4, 5},
        {2027, "easter", 3, 28},
        {1961, "easter", 4, 2},
        {1954, "easter", 4, 18},
        {2038, "easter", 4, 25},
        {2285, "easter", 3, 22},
        {2026, "good friday", 4, 3},
        {2026, "the whit monday", 5, 25},
        {2026, "shrove tuesday", 2, 17},
        {2026, "mothering sunday", 3, 15},
        {2026, "thanksgiving", 11, 26},
        {2024, "black friday", 11, 29},
        {2024, "election day", 11, 5},
        {2026, "memorial day", 5, 25},
        {2026, "labor day", 9, 7},
        {2026, "mothers day", 5, 10},
        {2022, "first advent", 11, 27},
        {2023, "advent", 12, 3},
        {2023, "fourth advent", 12, 24},
        {2026, "new years eve", 12, 31},
        {2000, "easter", 4, 23},
        {2011, "easter", 4, 24},
        {1818, "easter", 3, 22},
        {2026, "hanukkah", 12, 5},
        {2024, "passover", 4, 23},
        {2025, "yom kippur", 10, 2},
        {2026, "chinese new year", 2, 17},
        {2023, "chinese new year", 1, 22},
        {2027, "chinese new year", 2, 6},
        {2025, "ramadan", 3, 1},
        {2024, "eid al fitr", 4, 10},
    };
    for (const Row& row : rows) {
        const auto holiday = FeastDays::in(year(row.in), row.name);
        ASSERT_TRUE(holiday) << row.name;
        EXPECT_EQ(holiday->day, sys_days(year(row.in) / row.month / row.day)) << row.name << " " << row.in;
    }
    EXPECT_FALSE(FeastDays::in(year(2026), "christmas party"));
    EXPECT_EQ(FeastDays::next(sys_days(year(2026) / 12 / 26), "christmas")->day, sys_days(year(2027) / 12 / 25));
    EXPECT_EQ(FeastDays::next(sys_days(year(2026) / 12 / 25), "christmas")->day, sys_days(year(2026) / 12 / 25));
    EXPECT_EQ(FeastDays::on(sys_days(year(2026) / 12 / 25)), std::vector<std::string>{"Christmas Day"});
}

/// What differs from country to country, or means something else too, gives no request its day.
TEST(FeastDays, giveARequestItsDayOnlyByNamesOfOneDay)
{
    const sys_days from = year(2026) / 11 / 21;
    for (const char* name : {"christmas eve", "new year's day", "valentine’s day", "good friday", "thanksgiving"})
        EXPECT_TRUE(FeastDays::next(from, name, FeastDays::Names::ofOneDay)) << name;
    for (const char* name : {"mother's day", "labor day", "new year", "advent", "ramadan", "my birthday"})
        EXPECT_FALSE(FeastDays::next(from, name, FeastDays::Names::ofOneDay)) << name;
}

} // namespace
} // namespace quorvell
