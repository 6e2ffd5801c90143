// SPDX-License-Identifier: MIT
// Catches feasts on the wrong day.
#include "QuorvellCore/reminders/calendar/Holidays.h"

#include <gtest/gtest.h>

namespace quorvell {

using std::chrono::local_days;
using std::chrono::year;

TEST(Holidays, next)
{
    const LocalDay from = local_days(year(2026) / 11 / 21);
    struct Row {
        const char* name;
        std::chrono::year_month_day day;
    };
    const Row rows[] = {{"christmas eve", year(2026) / 12 / 24}, {"easter", year(2027) / 3 / 28},
        {"good friday", year(2027) / 3 / 26}, {"whit monday", year(2027) / 5 / 17},
        {"thanksgiving", year(2026) / 11 / 26}, {"halloween", year(2027) / 10 / 31}};
    for (const Row& row : rows)
        EXPECT_EQ(Holidays::next(row.name, from), local_days(row.day)) << row.name;
    EXPECT_EQ(Holidays::next("christmas eve", local_days(year(2026) / 12 / 24)), local_days(year(2026) / 12 / 24));
    EXPECT_FALSE(Holidays::next("my birthday", from));
}

TEST(Holidays, easterIsWhereTheTablesHaveIt)
{
    const std::chrono::year_month_day days[] = {year(1818) / 3 / 22, year(1961) / 4 / 2, year(2000) / 4 / 23,
        year(2011) / 4 / 24, year(2024) / 3 / 31, year(2038) / 4 / 25};
    for (const auto& day : days)
        EXPECT_EQ(Holidays::easter(static_cast<int>(day.year())), local_days(day));
}

} // namespace quorvell
