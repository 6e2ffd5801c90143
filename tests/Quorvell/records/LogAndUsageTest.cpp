// SPDX-License-Identifier: MIT
// Catches the story of a conversation told wrongly from the log, and use added up to the wrong day.
#include "FileSizeLimit.h"
#include "Quorvell/records/LogTimeline.h"
#include "Quorvell/records/UsageFile.h"
#include "Quorvell/records/UsageText.h"
#include "TemporaryFolder.h"
#include "VirtualScheduler.h"

#include <gtest/gtest.h>

namespace quorvell {
namespace {

using namespace std::chrono_literals;

const Calendar berlin = *Calendar::create("Europe/Berlin", "en_GB");

std::string line(const char* time, const char* event, const char* run, const char* more = "")
{
    return std::string(R"({"at":"2026-11-21T)") + time + R"(Z","event":")" + event + R"(","run":")" + run + "\"" + more
        + "}\n";
}

TEST(LogTimeline, toldByRunWithPausesAndProblemsMarked)
{
    const std::string log = line("10:00:00.000", "session_started", "aa1", R"(,"after_ms":120)")
        + line("10:00:01.000", "session_started", "bb2") + "not a line\n"
        + line("10:00:09.500", "session_lost", "aa1", R"(,"code":1006,"reason":"a\u001b[2Jb")")
        + line("10:00:08.000", "clock_changed", "aa1") + line("10:50:00.000", "session_started", "aa1")
        + std::string(LogEntry::longestLine + 1, 'x') + "\n" + R"({"at":"yesterday","event":"x"})";
    const LogTimeline timeline = LogTimeline::of(log);
    EXPECT_EQ(timeline.unreadable, 3U);
    ASSERT_EQ(timeline.conversations.size(), 3U);
    EXPECT_EQ(timeline.conversations[2].id, "aa1-2");
    EXPECT_EQ(LogTimeline::heading(timeline.conversations[0], berlin),
        "aa1  2026-11-21 11:00  8 s, 3 events, 1 of them a problem");
    EXPECT_EQ(LogTimeline::lines(timeline.conversations[0], berlin),
        (std::vector<std::string>{"11:00:00.000   session started              after 120 ms", "              … 10 s",
            "11:00:09.500 ! session lost                 code: 1006, reason: a[2Jb",
            "              … the clock was set back", "11:00:08.000   clock changed"}));
    EXPECT_EQ(timeline.find("aa1")->id, "aa1");
    EXPECT_EQ(timeline.find("b")->id, "bb2");
    EXPECT_EQ(timeline.find("a"), nullptr);
    EXPECT_EQ(timeline.find(""), nullptr);
    EXPECT_TRUE(LogTimeline::of("").conversations.empty());
}

TEST(UsageBook, staysBoundedAndBelievesNoNonsense)
{
    UsageBook book;
    for (int day = 1; day <= 30; ++day)
        for (const char* month : {"2026-09-", "2026-10-", "2026-11-"})
            book.add(month + std::string(day < 10 ? "0" : "") + std::to_string(day), {60, 30, 0, 0, 10});
    EXPECT_EQ(book.days.size(), UsageBook::mostDays);
    EXPECT_EQ(book.sumOf("2026-11").spokenSeconds, 30 * 60);
    EXPECT_EQ(UsageBook::fromText(book.text()), book);
    for (const char* text : {"", "[]", "{\"days\": 7}", "{\"days\": {\"today\": {\"tokens\": 7}}}"})
        EXPECT_TRUE(UsageBook::fromText(text).days.empty()) << text;
    const UsageBook odd = UsageBook::fromText(
        R"({"days": {"2026-11-21": {"spoken_seconds": 1e300, "billed_seconds": -4, "tokens": "many"}}})");
    EXPECT_EQ(odd.sumOf("2026-11-21"), UsageBook::Day{86'400});
}

TEST(UsageFile, addsUpWhatSeveralProgramsUseOnTheUsersDay)
{
    const test::TemporaryFolder folder;
    VirtualScheduler clock;
    clock.wallClockAtStart += 12h + 30min; // 23:30 in Berlin.
    UsageFile one(folder / "usage.json", clock, berlin);
    UsageFile other(folder / "usage.json", clock, berlin);
    one.addSeconds(100);
    SessionUsage sums;
    sums.tokens = 50;
    sums.billedSeconds = 20;
    sums.microphoneChunks = 25;
    one.usageChanged(sums);
    sums.tokens = 80;
    one.usageChanged(sums);
    other.addSeconds(11);
    EXPECT_EQ(one.secondsToday(), 100);
    clock.advance(UsageFile::betweenWrites);
    other.addSeconds(1);
    other.conversationEnded({});
    EXPECT_EQ(other.secondsToday(), 112);
    EXPECT_EQ(other.book().sumOf("2026-11-21"), (UsageBook::Day{112, 20, 1, 0, 80}));
    clock.advance(1h);
    EXPECT_EQ(one.secondsToday(), 0);
    EXPECT_EQ(one.today(), "2026-11-22");
    one.conversationEnded({});
    one.usageChanged(SessionUsage{.tokens = 7}); // A new conversation counts from nothing.
    EXPECT_EQ(one.book().sumOf("2026-11-22").tokens, 7);
    EXPECT_EQ(UsageText::ofDays(other.book(), "2026-11-21", UsageText::Service::hosted),
        "Today: 1 min 52 s of spoken conversation (1 s of your voice sent, 0 s of answers), 20 s billed, 80 tokens.\n"
        "This month: 1 min 52 s of spoken conversation (1 s of your voice sent, 0 s of answers), 20 s billed, 80 "
        "tokens.");
    EXPECT_EQ(UsageText::ofConversation(SessionUsage{.billedSeconds = 3}, UsageText::Service::onDevice),
        "This conversation: 0 s of spoken conversation.");
}

TEST(UsageFile, forgetsNothingWhileTheDiskIsFull)
{
    const test::TemporaryFolder folder;
    VirtualScheduler clock;
    UsageFile usage(folder / "usage.json", clock, berlin);
    {
        const test::FileSizeLimit full(10);
        for (int time = 0; time < 2; ++time) {
            usage.addSeconds(50);
            clock.advance(UsageFile::betweenWrites);
        }
        EXPECT_EQ(usage.secondsToday(), 100) << "the limit of the day goes by it";
    }
    usage.conversationEnded({});
    EXPECT_EQ(UsageFile(folder / "usage.json", clock, berlin).secondsToday(), 100);
}

} // namespace
} // namespace quorvell
