// SPDX-License-Identifier: MIT
// Catches repeats that come on the wrong day, or do not come back from their text.
#include "QuorvellCore/reminders/ReminderRepeat.h"

#include <gtest/gtest.h>

namespace quorvell {
namespace {

TEST(ReminderRepeat, textForms)
{
    struct Row {
        const char* text;
        std::optional<std::string> stored; ///< Absent when there is no rule.
        const char* spoken;
    };
    const Row rows[] = {
        {"daily", "daily", "Every day"},
        {"Daily", "daily", "Every day"},
        {"WEEKDAYS", "weekdays", "Every weekday"},
        {"yearly", "yearly", "Every year"},
        {"MONTHLY:31", "monthly:31", "Every month on the 31st"},
        {"monthly:03", "monthly:3", "Every month on the 3rd"},
        {"weekly:2", "weekly:2", "Every Monday"},
        {"weekly:6,2,4,2", "weekly:2,4,6", "Every Monday, Wednesday and Friday"},
        {"weekly:7,1", "weekly:1,7", "Every Sunday and Saturday"},
        {"monthly:0", {}, ""},
        {"monthly:32", {}, ""},
        {"monthly:", {}, ""},
        {"monthly:-1", {}, ""},
        {"monthly:1 ", {}, ""},
        {"monthly", {}, ""},
        {"weekly", {}, ""},
        {"weekly:", {}, ""},
        {"weekly:0", {}, ""},
        {"weekly:8", {}, ""},
        {"weekly:2,", {}, ""},
        {"weekly:,2", {}, ""},
        {"weekly:2,x", {}, ""},
        {"weekly: 2", {}, ""},
        {"daily ", {}, ""},
        {"hourly", {}, ""},
        {"", {}, ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const auto rule = ReminderRepeat::fromStored(row.text);
        EXPECT_EQ(rule ? std::optional(rule->stored()) : std::nullopt, row.stored);
        EXPECT_EQ(rule ? rule->spoken("en_US") : "", row.spoken);
    }
    EXPECT_EQ(ReminderRepeat::fromStored("weekly:2,3")->spoken("de_DE"), "Every Montag and Dienstag");
}

TEST(ReminderRepeat, next)
{
    struct Row {
        const char* rule;
        const char* base; ///< Instants in Berlin's winter time are an hour behind its clock, in summer two.
        const char* after;
        const char* next; ///< Empty when there is none.
    };
    const Row rows[] = {
        {"daily", "2026-11-21T08:00:00.000Z", "2026-11-21T08:00:00.000Z", "2026-11-22T08:00:00.000Z"},
        {"daily", "2026-11-21T08:00:00.000Z", "2026-11-25T07:59:59.999Z", "2026-11-25T08:00:00.000Z"},
        {"daily", "2026-11-21T08:00:00.000Z", "2026-12-05T07:00:00.000Z", "2026-12-05T08:00:00.000Z"},
        {"daily", "2026-11-21T08:00:00.000Z", "2026-12-05T08:00:00.000Z", ""},
        {"daily", "2026-03-28T08:00:00.000Z", "2026-03-28T08:00:00.000Z", "2026-03-29T07:00:00.000Z"},
        // A time that one day skips is not lost for the days after it.
        {"daily", "2026-03-28T01:30:00.000Z", "2026-03-29T01:30:00.000Z", "2026-03-30T00:30:00.000Z"},
        {"weekdays", "2026-11-20T08:00:00.000Z", "2026-11-20T08:00:00.000Z", "2026-11-23T08:00:00.000Z"},
        {"weekly:2", "2026-11-23T08:00:00.000Z", "2026-11-23T08:00:00.000Z", "2026-11-30T08:00:00.000Z"},
        {"weekly:2,7", "2026-11-21T08:00:00.000Z", "2026-11-21T08:00:00.000Z", "2026-11-23T08:00:00.000Z"},
        {"weekly:2", "2026-11-23T08:00:00.000Z", "2026-12-07T08:00:00.000Z", ""},
        {"monthly:31", "2026-01-31T08:00:00.000Z", "2026-01-31T08:00:00.000Z", "2026-02-28T08:00:00.000Z"},
        {"monthly:31", "2026-02-28T08:00:00.000Z", "2026-02-28T08:00:00.000Z", "2026-03-31T07:00:00.000Z"},
        {"monthly:31", "2028-01-31T08:00:00.000Z", "2028-01-31T08:00:00.000Z", "2028-02-29T08:00:00.000Z"},
        {"monthly:30", "2026-11-30T08:00:00.000Z", "2028-12-30T08:00:00.000Z", "2029-01-30T08:00:00.000Z"},
        {"monthly:15", "2026-11-10T08:00:00.000Z", "2026-11-10T08:00:00.000Z", "2026-11-15T08:00:00.000Z"},
        {"monthly:1", "2026-12-01T08:00:00.000Z", "2026-12-01T08:00:00.000Z", "2027-01-01T08:00:00.000Z"},
        {"yearly", "2026-11-21T08:00:00.000Z", "2026-11-21T08:00:00.000Z", "2027-11-21T08:00:00.000Z"},
        {"yearly", "2026-11-21T08:00:00.000Z", "2030-11-21T08:00:00.000Z", "2031-11-21T08:00:00.000Z"},
        {"yearly", "2024-02-29T08:00:00.000Z", "2024-02-29T08:00:00.000Z", "2025-02-28T08:00:00.000Z"},
        {"yearly", "2024-02-29T08:00:00.000Z", "2027-03-01T08:00:00.000Z", "2028-02-29T08:00:00.000Z"},
        {"yearly", "9999-02-01T08:00:00.000Z", "9999-02-01T08:00:00.000Z", ""},
        {"monthly:1", "9999-12-05T08:00:00.000Z", "9999-12-05T08:00:00.000Z", ""},
    };
    const auto calendar = *Calendar::create("Europe/Berlin", "en_US");
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.rule) + " from " + row.base + " after " + row.after);
        const auto rule = ReminderRepeat::fromStored(row.rule);
        ASSERT_TRUE(rule);
        const auto next = rule->next(*parseIsoText(row.after), *parseIsoText(row.base), calendar);
        EXPECT_EQ(next ? isoText(*next) : "", row.next);
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

} // namespace
} // namespace quorvell
