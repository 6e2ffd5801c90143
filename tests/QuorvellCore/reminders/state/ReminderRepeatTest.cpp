// SPDX-License-Identifier: MIT
// Catches repeats that come on the wrong day, or do not come back from their text.
#include "QuorvellCore/reminders/state/ReminderRepeat.h"

#include <gtest/gtest.h>

#include <tuple>

namespace quorvell {

TEST(ReminderRepeat, textForms)
{
    const std::tuple<const char*, const char*, const char*> rows[] = {{"daily", "daily", "Every day"},
        {"Daily", "daily", "Every day"}, {"WEEKDAYS", "weekdays", "Every weekday"}, {"yearly", "yearly", "Every year"},
        {"MONTHLY:31", "monthly:31", "Every month on the 31st"}, {"monthly:03", "monthly:3", "Every month on the 3rd"},
        {"weekly:2", "weekly:2", "Every Monday"},
        {"weekly:6,2,4,2", "weekly:2,4,6", "Every Monday, Wednesday and Friday"},
        {"weekly:7,1", "weekly:1,7", "Every Sunday and Saturday"}};
    for (const auto& [text, stored, spoken] : rows) {
        SCOPED_TRACE(text);
        const auto rule = ReminderRepeat::fromStored(text);
        ASSERT_TRUE(rule);
        EXPECT_EQ(rule->stored(), stored);
        EXPECT_EQ(rule->spoken("en_US"), spoken);
    }
    for (const char* text :
        {"monthly:0", "monthly:32", "monthly:", "monthly:-1", "monthly:1 ", "monthly", "weekly", "weekly:", "weekly:0",
            "weekly:8", "weekly:2,", "weekly:,2", "weekly:2,x", "weekly: 2", "daily ", "hourly", ""})
        EXPECT_EQ(ReminderRepeat::fromStored(text), std::nullopt) << text;
    EXPECT_EQ(ReminderRepeat::fromStored("weekly:2,3")->spoken("de_DE"), "Every Monday and Tuesday");
}

TEST(ReminderRepeat, next)
{
    const struct Row {
        const char* rule;
        const char* base; ///< Instants in Berlin's winter time are an hour behind its clock, in summer two.
        const char* after;
        const char* next; ///< Empty when there is none.
    } rows[] = {
        {"daily", "2026-11-21T08:00", "2026-11-21T08:00", "2026-11-22T08:00"},
        {"daily", "2026-11-21T08:00", "2026-11-25T07:59", "2026-11-25T08:00"},
        {"daily", "2026-11-21T08:00", "2026-12-05T07:00", "2026-12-05T08:00"},
        {"daily", "2026-11-21T08:00", "2026-12-05T08:00", ""},
        {"daily", "2026-03-28T08:00", "2026-03-28T08:00", "2026-03-29T07:00"},
        // A time that one day skips is not lost for the days after it.
        {"daily", "2026-03-28T01:30", "2026-03-29T01:30", "2026-03-30T00:30"},
        {"weekdays", "2026-11-20T08:00", "2026-11-20T08:00", "2026-11-23T08:00"},
        {"weekly:2", "2026-11-23T08:00", "2026-11-23T08:00", "2026-11-30T08:00"},
        {"weekly:2,7", "2026-11-21T08:00", "2026-11-21T08:00", "2026-11-23T08:00"},
        {"weekly:2", "2026-11-23T08:00", "2026-12-07T08:00", ""},
        {"monthly:31", "2026-01-31T08:00", "2026-01-31T08:00", "2026-02-28T08:00"},
        {"monthly:31", "2026-02-28T08:00", "2026-02-28T08:00", "2026-03-31T07:00"},
        {"monthly:31", "2028-01-31T08:00", "2028-01-31T08:00", "2028-02-29T08:00"},
        {"monthly:30", "2026-11-30T08:00", "2028-12-30T08:00", "2029-01-30T08:00"},
        {"monthly:15", "2026-11-10T08:00", "2026-11-10T08:00", "2026-11-15T08:00"},
        {"monthly:1", "2026-12-01T08:00", "2026-12-01T08:00", "2027-01-01T08:00"},
        {"yearly", "2026-11-21T08:00", "2026-11-21T08:00", "2027-11-21T08:00"},
        {"yearly", "2026-11-21T08:00", "2030-11-21T08:00", "2031-11-21T08:00"},
        {"yearly", "2024-02-29T08:00", "2024-02-29T08:00", "2025-02-28T08:00"},
        {"yearly", "2024-02-29T08:00", "2027-03-01T08:00", "2028-02-29T08:00"},
        {"yearly", "9999-02-01T08:00", "9999-02-01T08:00", ""},
        {"monthly:1", "9999-12-05T08:00", "9999-12-05T08:00", ""},
    };
    const auto calendar = *Calendar::create("Europe/Berlin", "en_US");
    const auto at = [](const std::string& minute) { return *parseIsoText(minute + ":00Z"); };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.rule) + " from " + row.base + " after " + row.after);
        const auto rule = ReminderRepeat::fromStored(row.rule);
        ASSERT_TRUE(rule);
        const auto next = rule->next(at(row.after), at(row.base), calendar);
        EXPECT_EQ(next ? isoText(*next).substr(0, 16) : "", row.next);
    }
}

TEST(ReminderRepeat, first)
{
    const auto calendar = *Calendar::create("Europe/Berlin", "en_US");
    const Instant saturday = *parseIsoText("2026-11-21T08:00:00Z");
    for (const auto& [rule, first] : {std::pair("daily", "2026-11-21T08:00:00.000Z"),
             {"weekdays", "2026-11-23T08:00:00.000Z"}, {"weekly:7", "2026-11-21T08:00:00.000Z"},
             {"weekly:2,6", "2026-11-23T08:00:00.000Z"}, {"monthly:21", "2026-11-21T08:00:00.000Z"},
             {"monthly:31", "2026-11-30T08:00:00.000Z"}, {"yearly", "2026-11-21T08:00:00.000Z"}})
        EXPECT_EQ(isoText(ReminderRepeat::fromStored(rule)->first(saturday, calendar)), first) << rule;
}

} // namespace quorvell
