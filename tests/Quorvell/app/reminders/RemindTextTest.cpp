// SPDX-License-Identifier: MIT
// Catches reminders set without a conversation that are told or read wrongly.
#include "Quorvell/app/reminders/RemindText.h"

#include "FixtureTable.h"
#include "Quorvell/app/reminders/RemindPhrases.h"
#include "Quorvell/app/reminders/RemindRequest.h"

#include <gtest/gtest.h>

#include <span>
#include <sstream>

namespace quorvell {

namespace {

const Instant spokenAt = *parseIsoText("2026-11-21T09:30:00Z");
const Calendar calendar = *Calendar::create("Europe/Berlin", "en_US");

} // namespace

TEST(RemindText, saysWhatIsUnderstood)
{
    for (const auto& [name, lines] : test::fixtureRows("app/remind.txt")) { // Words, and how what is said begins.
        std::string begins;
        for (const std::string& line : std::span(lines).subspan(1))
            begins += (begins.empty() ? "" : "\n") + line;
        const std::string text =
            remindText(ReminderRequest::fromWords(lines[0], spokenAt, calendar), spokenAt, calendar);
        EXPECT_TRUE(text.starts_with(begins) && !begins.empty()) << text;
    }
}

TEST(RemindRequest, readsWhatAScriptWritesByTheClockOfPrograms)
{
    struct Row {
        const char* words;
        const char* date; ///< Empty: nobody can tell.
    };
    const Row rows[] = {
        {"friday at 10:30 send the report", "2026-11-27T09:30:00.000Z"},
        {"tomorrow 05:00 feed the cat", "2026-11-22T04:00:00.000Z"},
        {"every monday at 08:15, run", "2026-11-23T07:15:00.000Z"},
        {"tomorrow at 5 call mum", ""},
        {"tomorrow at 5:30 call mum", ""},
        {"friday at 10.30 send the report", ""},
    };
    for (const Row& row : rows) {
        const ReminderRequest request = remindRequest(row.words, spokenAt, calendar, nullptr);
        const bool isSettled = request.verdict == ReminderRequest::Verdict::ready;
        EXPECT_EQ(isSettled ? isoText(request.date) : "", row.date) << row.words;
        const auto asked =
            remindRequest(row.words, spokenAt, calendar, [](const auto& choices) { return choices.back(); });
        EXPECT_EQ(asked.verdict, ReminderRequest::Verdict::ready) << row.words;
    }
    const auto twoTimes = remindRequest("friday at 10:30 read 08:15 aloud", spokenAt, calendar, nullptr);
    EXPECT_EQ(twoTimes.verdict, ReminderRequest::Verdict::needsTime);
}

TEST(RemindPhrases, comeFromTheCallOrTheInput)
{
    std::istringstream input("one\r\n\n" + std::string(2 * ReminderPhrase::maximumBytes, 'a') + "\nlast");
    RemindPhrases call("at - 5", input);
    EXPECT_EQ(call.next(), "at - 5");
    EXPECT_EQ(call.next(), std::nullopt);
    RemindPhrases lines("-", input);
    EXPECT_EQ(lines.next(), "one");
    EXPECT_EQ(lines.next(), "");
    EXPECT_EQ(lines.next().value_or("").size(), ReminderPhrase::maximumBytes + 1) << "refused, but not kept whole";
    EXPECT_EQ(lines.next(), "last");
    EXPECT_EQ(lines.next(), std::nullopt);
}

} // namespace quorvell
