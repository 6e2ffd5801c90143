// SPDX-License-Identifier: MIT
// Catches days, hours and lengths that are read wrongly, and program's own words that it does not understand.
#include "Understanding/time/SpokenDays.h"

#include "Understanding/time/SpokenLength.h"
#include "Understanding/time/SpokenMoment.h"
#include "Understanding/time/SpokenWhen.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace quorvell {
namespace {

const Calendar berlin = *Calendar::create("Europe/Berlin", "en_US");
const std::chrono::sys_days saturday = std::chrono::year(2026) / 11 / 21;
const LocalTime around{saturday + std::chrono::hours(12), berlin}; // 13:00 there.

std::string shown(const std::optional<SpokenDays>& days)
{
    return days ? days->from.text() + " - " + days->to.text() + " " + days->words : "nothing";
}

TEST(SpokenDays, read)
{
    struct Row {
        const char* words;
        const char* days;
    };
    constexpr Row rows[] = {
        {"this month", "2026-11-21 - 2026-11-30 this month"},
        {"next month", "2026-12-01 - 2026-12-31 next month"},
        {"in march", "2027-03-01 - 2027-03-31 in March"},
        {"june 2028", "2028-06-01 - 2028-06-30 in June 2028"},
        {"may", "nothing"},
        {"next weekend", "2026-11-28 - 2026-11-29 next weekend"},
        {"on next week", "2026-11-23 - 2026-11-29 next week"},
        {"all of next week", "2026-11-23 - 2026-11-29 next week"},
        {"the week after next", "2026-11-30 - 2026-12-06 the week after next"},
        {"last week", "2026-11-09 - 2026-11-15 last week"},
        {"yesterday", "2026-11-20 - 2026-11-20 yesterday"},
        {"the next ten days", "2026-11-21 - 2026-12-01 in the next 10 days"},
        {"from monday to wednesday", "2026-11-23 - 2026-11-25 from monday to wednesday"},
        {"june 3-5", "2027-06-03 - 2027-06-05 from june 3-5"},
        {"between the 3rd and the 5th of june", "2027-06-03 - 2027-06-05 between the 3rd and the 5th of june"},
        {"until friday", "2026-11-21 - 2026-11-27 until friday"},
        {"between 9:20 and 10:30", "2026-11-22 09:20 - 2026-11-22 10:30 tomorrow between 9:20 AM and 10:30 AM"},
        {"from three to five", "2026-11-21 15:00 - 2026-11-21 17:00 today between 3 PM and 5 PM"},
        {"from 9 to 5 on friday", "2026-11-27 09:00 - 2026-11-27 17:00 on friday between 9 AM and 5 PM"},
        {"from 11 to 1 pm tomorrow", "2026-11-22 11:00 - 2026-11-22 13:00 tomorrow between 11 AM and 1 PM"},
        {"today after 6pm", "2026-11-21 18:00 - 2026-11-21 23:59 today after 6 PM"},
        {"before noon tomorrow", "2026-11-22 00:00 - 2026-11-22 12:00 tomorrow before 12 PM"},
        {"on wensday", "2026-11-25 - 2026-11-25 on Wednesday the 25th of November"},
        {"the first monday of may", "2027-05-03 - 2027-05-03 on Monday the 3rd of May 2027"},
        {"on friday or so", "nothing"},
        {"last friday", "2026-11-20 - 2026-11-20 last Friday"},
        {"last weekend", "2026-11-14 - 2026-11-15 last weekend"},
        {"on tuesday 2 to 4", "2026-11-24 14:00 - 2026-11-24 16:00 on tuesday between 2 PM and 4 PM"},
        {"tuesday 10:30-11:15", "2026-11-24 10:30 - 2026-11-24 11:15 tuesday between 10:30 AM and 11:15 AM"},
        {"2 to 4", "nothing"},
        {"from 22:00 to 06:00 on thursday", "2026-11-26 22:00 - 2026-11-27 06:00 on thursday from 10 PM to 6 AM"},
    };
    for (const Row& row : rows) {
        const auto days = SpokenDays::read(row.words, around);
        EXPECT_EQ(shown(days), row.days) << row.words;
        const auto again = days ? SpokenDays::read(days->words, around) : days;
        EXPECT_EQ(again, days) << "said back: " << row.words;
    }
}

TEST(SpokenDays, ofTheWeekThatIsAllButOver)
{
    const LocalTime sundayEvening{saturday + std::chrono::hours(46), berlin};
    for (const auto& [words, days] :
        {std::pair("this week", "2026-11-23 - 2026-11-29 in the week from Monday the 23rd of November"),
            std::pair("the weekend", "2026-11-28 - 2026-11-29 on the weekend of Saturday the 28th of November"),
            std::pair("next week", "2026-11-23 - 2026-11-29 next week")}) {
        const auto read = SpokenDays::read(words, sundayEvening);
        EXPECT_EQ(shown(read), days);
        EXPECT_EQ(read ? SpokenDays::read(read->words, sundayEvening) : read, read) << words;
    }
}

TEST(SpokenDays, findsTheDayAndNoPlaceInARow)
{
    std::string others;
    EXPECT_EQ(SpokenDays::find("the first thing on my calendar tomorrow", around, others)->words, "tomorrow");
    EXPECT_EQ(SpokenDays::find("the second event on wednesday", around, others)->words, "on wednesday");
    EXPECT_EQ(SpokenDays::find("anything on the second", around, others)->from.text(), "2026-12-02");
}

TEST(SpokenLength, read)
{
    struct Row {
        const char* words;
        int minutes;
        const char* rest;
    };
    constexpr Row rows[] = {{"2 hours and 30 minutes", 150, ""}, {"for an hour and a quarter", 75, ""},
        {"two and a half hours", 150, ""}, {"1.5 hours", 90, ""}, {"a 45 minute walk", 45, "walk"},
        {"a 30-minute call", 30, "call"}, {"call for 1h30", 90, "call"}, {"half an hour of yoga", 30, "of yoga"},
        {"three quarters of an hour", 45, ""}, {"a free hour", 60, ""}};
    for (const Row& row : rows) {
        const auto length = SpokenLength::read(row.words);
        ASSERT_TRUE(length) << row.words;
        EXPECT_EQ(std::to_string(length->minutes) + length->rest, std::to_string(row.minutes) + row.rest) << row.words;
    }
    EXPECT_FALSE(SpokenLength::read("two days"));
    EXPECT_EQ(SpokenLength::ofThing("30 minutes with Ana at 3")->minutes, 30);
    for (const char* distance : {"call in 2 hours", "an hour before lunch", "in about half an hour", "two hours later",
             "an appointment at 14h", "for 1730 hours"})
        EXPECT_FALSE(SpokenLength::ofThing(distance)) << distance;
}

TEST(SpokenWhen, isUnderstoodWhenItIsSaidBack)
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    constexpr int dates = 200;
#else
    constexpr int dates = 1000;
#endif
    std::mt19937 chance(1);
    std::uniform_int_distribution<int> steps(1, 363 * 24 * 12);
    for (int count = 0; count < dates; ++count) {
        // Through the year, and across both changes of the clocks.
        const LocalTime then{around.now + std::chrono::hours(24 * (count % 366)), berlin};
        const DateParts date = DateParts::from(then.now + std::chrono::minutes(5 * steps(chance)), berlin);
        for (const std::string& words : {SpokenWhen::date(date), SpokenWhen::on(SpokenWhen::date(date)),
                 SpokenWhen::on(SpokenWhen::dateSeenFrom(date, then)),
                 "on " + SpokenWhen::date(date.wholeDay()) + " at " + SpokenWhen::timeOfDay(date)}) {
            const auto moment = SpokenMoment::read(words, then);
            EXPECT_TRUE(moment && moment->date == date && moment->rest.empty() && moment->namesDay)
                << words << " seen from " << isoText(then.now) << " is " << (moment ? moment->date.text() : "nothing");
        }
        const std::string day = SpokenWhen::on(SpokenWhen::dateSeenFrom(date.wholeDay(), then));
        const auto days = SpokenDays::read(day, then);
        EXPECT_TRUE(days && days->from == date.wholeDay()) << day;
    }
}

} // namespace
} // namespace quorvell
