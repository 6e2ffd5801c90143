// SPDX-License-Identifier: MIT
// Catches alarms set for another hour than was meant, timers that lose or win time, and changes that cannot be taken
// back.
#include "Quorvell/tools/reminders/ReminderAlarms.h"

#include "FixtureTable.h"
#include "MemoryNotebook.h"
#include "Quorvell/reminding/AlarmMark.h"
#include "Quorvell/tools/reminders/AlarmHour.h"
#include "Quorvell/tools/reminders/ReminderTools.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <memory>

namespace quorvell {
namespace {

/// A notebook, and a clock that a line "@ 2026-11-21T09:30:00Z" sets. It is a Saturday, 10:30 in Berlin.
struct AlarmBench {
    MemoryNotebook notebook;
    ToolRegistry registry;
    UndoBook undo;
    Instant now = *parseIsoText("2026-11-21T09:30:00Z");
    int made = 0;

    AlarmBench()
    {
        registerReminderTools(registry, notebook,
            {.now = [this] { return now; },
                .calendar = *Calendar::create("Europe/Berlin", "en_US"),
                .newID = [this] { return "id" + std::to_string(++made); },
                .undo = &undo});
    }

    /// Without its message to the model.
    std::string call(const std::string& arguments)
    {
        std::string answer = "none";
        (*registry.owner("set_reminder"))(LiveFunctionCall::fromArgumentsText("1", "set_reminder", arguments, false),
            ToolReply([&](const Json& result) {
                Json shown = result;
                shown.erase("message");
                answer = dumpJson(shown);
            }));
        return answer;
    }

    std::vector<std::string> play(const std::string& line)
    {
        if (line.starts_with("@ ")) {
            now = parseIsoText(line.substr(2)).value_or(now);
            return {};
        }
        return {call(line)};
    }
};

TEST(ReminderAlarms, doWhatIsAskedOfThem)
{
    test::playFixture("tools/alarms.txt",
        [] { return [bench = std::make_shared<AlarmBench>()](const std::string& line) { return bench->play(line); }; });
}

TEST(AlarmHour, isTheLikelyOneOrAsked)
{
    const Calendar calendar = *Calendar::create("Europe/Berlin", "en_US");
    const std::tuple<const char*, const char*, const char*> rows[] = {
        // Said at; the hour; what is taken, in local time.
        {"2026-11-21T09:30:00Z", "7", "2026-11-22 07:00"}, {"2026-11-21T21:30:00Z", "7:15", "2026-11-22 07:15"},
        {"2026-11-21T15:30:00Z", "7", "asked"}, // 16:30: the evening one is near.
        {"2026-11-21T02:30:00Z", "5", "2026-11-21 05:00"}, {"2026-11-21T09:30:00Z", "3", "2026-11-21 15:00"},
        {"2026-11-21T21:30:00Z", "4", "asked"}, // An early flight, or a nap tomorrow.
    };
    for (const auto& [said, hour, taken] : rows) {
        SCOPED_TRACE(std::string(said) + " " + hour);
        AlarmBench bench;
        bench.now = *parseIsoText(said);
        const auto answer = parseJson(bench.call(R"({"alarm":true,"text":"at )" + std::string(hour) + "\"}"));
        ASSERT_TRUE(answer);
        EXPECT_EQ(readString(*answer, "date").value_or("asked"), taken) << dumpJson(*answer);
        EXPECT_EQ(memberOf(*answer, "other") != nullptr, std::string(taken) != "asked");
    }
}

/// Whatever hands did in between, what is taken back is exactly what was done.
TEST(ReminderAlarms, areTakenBackWhole)
{
    const char* const changes[] = {R"({"id":"id1","later":"tomorrow at 9 am"})", R"({"id":"id1","task":"Gym"})",
        R"({"kind":"alarm","cancel":true})", R"({"cancel":true,"ids":["id1"]})", R"({"id":"id1","repeat":"daily"})"};
    for (const char* change : changes) {
        SCOPED_TRACE(change);
        AlarmBench bench;
        bench.call(R"({"alarm":true,"text":"tomorrow at 7 am"})");
        const std::vector<Note> before = bench.notebook.list;
        const auto answer = parseJson(bench.call(change));
        EXPECT_NE(bench.notebook.list, before);
        const std::string token = answer ? readString(*answer, "undo").value_or("") : "";
        EXPECT_TRUE(bench.call(R"({"undo":")" + token + "\"}").starts_with(R"({"status":"undone")"));
        EXPECT_EQ(bench.notebook.list, before);
        EXPECT_TRUE(bench.call(R"({"undo":")" + token + "\"}").starts_with(R"({"error")")); // Once.
    }
    AlarmBench other;
    other.call(R"({"text":"tomorrow at 7 am feed the cat"})");
    other.notebook.list.front().title = "Feed the dog";
    EXPECT_TRUE(other.call(R"({"undo":"u1"})").starts_with(R"({"error":"That was changed again)"));
    EXPECT_EQ(other.notebook.list.size(), 1U);
}

} // namespace
} // namespace quorvell
