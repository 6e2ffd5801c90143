// SPDX-License-Identifier: MIT
// Catches requests for a reminder that guess where they should ask.
#include "QuorvellCore/reminders/request/ReminderRequest.h"

#include "FixtureTable.h"
#include "QuorvellCore/reminders/calendar/DateParts.h"
#include "QuorvellCore/reminders/calendar/ReminderWords.h"
#include "QuorvellCore/reminders/spoken/SpokenTimes.h"

#include <gtest/gtest.h>

#include <string>

namespace quorvell {
namespace {

using Verdict = ReminderRequest::Verdict;

const Calendar berlin = *Calendar::create("Europe/Berlin", "en_US");
const Instant saturday = *parseIsoText("2026-11-21T09:30:00Z"); // 10:30 there.

ReminderRequest read(std::string_view words)
{
    return ReminderRequest::fromWords(words, saturday, berlin);
}

/// "ready | Call mum | 2026-11-23 17:00 weekly:2"; of several times all.
std::string shown(const ReminderRequest& request)
{
    constexpr std::array verdicts{"ready", "whichTime", "needsTime", "pastTime", "needsTask"};
    std::string dates = request.date == Instant() ? "" : " | " + DateParts::from(request.date, berlin).text();
    for (std::size_t index = 1; index < request.choices.size(); ++index)
        dates += ", " + DateParts::from(request.choices[index], berlin).text();
    return verdicts[static_cast<std::size_t>(request.verdict)] + (" | " + request.task) + dates
        + (request.repeatRule ? " " + request.repeatRule->stored() : "");
}

TEST(ReminderRequest, fromWords)
{
    EXPECT_EQ(shown(read("")), "needsTime | ");
    for (const auto& row : test::fixtureRows("reminders/requests.txt", 2))
        EXPECT_EQ(shown(read(row.lines[0])), row.lines[1]) << row.name << ": " << row.lines[0];
}

TEST(ReminderRequest, asksWhereATimeWasPassedOver)
{
    for (const auto& row : test::fixtureRows("reminders/asked.txt"))
        for (const std::string& words : row.lines)
            EXPECT_EQ(read(words).verdict, Verdict::needsTime) << row.name << ": " << words;
}

TEST(ReminderRequest, keepsWhatWasClearBesideWhatIsAsked)
{
    for (const auto& row : test::fixtureRows("reminders/kept.txt", 2)) {
        const auto request = read(row.lines[0]);
        const UnderstoodTime& clear = request.understood;
        EXPECT_EQ(request.verdict, Verdict::needsTime) << row.lines[0];
        EXPECT_EQ(request.task + " | " + request.unclear + " | " + clear.rule + "|" + clear.day + "|" + clear.clock,
            row.lines[1])
            << row.lines[0];
    }
}

TEST(ReminderRequest, tasksKeepWhatOnlyLooksLikeATime)
{
    const auto rows = test::fixtureRows("reminders/tasks.txt");
    for (const std::string& task : rows.front().lines)
        EXPECT_EQ(shown(read("remind me to " + task + " tomorrow")), "ready | " + task + " | 2026-11-22 09:00");
}

TEST(ReminderRequest, understandsTheDatesThatAreSpokenToTheUser)
{
    for (int days = 1; days < 365; days += 13) {
        const Instant date = berlin.addingDays(saturday, std::chrono::days(days));
        const std::string spoken = ReminderWords::spoken(date, saturday, berlin, berlin.locale());
        EXPECT_EQ(ReminderRequest::fromWords("call mum on " + spoken, saturday, berlin).date, date) << spoken;
        const auto said = ReminderRequest::fromWords("on " + spoken + " call mum", saturday, berlin);
        EXPECT_EQ(said.task, "Call mum") << spoken;
    }
}

TEST(ReminderRequest, aRepeatThatIsPastMovesOn)
{
    const Instant past = *parseIsoText("2026-11-20T08:00:00Z");
    const auto daily = ReminderRequest::settled("Run", past, true, ReminderRepeat::daily(), saturday, berlin);
    EXPECT_EQ(daily.verdict, Verdict::ready);
    EXPECT_EQ(isoText(daily.date), "2026-11-22T08:00:00.000Z");
    EXPECT_EQ(ReminderRequest::settled("Run", past, true, {}, saturday, berlin).verdict, Verdict::pastTime);
    EXPECT_EQ(ReminderRequest::settled("", saturday, true, {}, saturday, berlin).verdict, Verdict::needsTask);
}

TEST(SpokenTimes, areWritten)
{
    for (const auto& row : test::fixtureRows("reminders/spoken.txt", 2))
        EXPECT_EQ(withWrittenTimes(row.lines[0]), row.lines[1]);
}

} // namespace
} // namespace quorvell
