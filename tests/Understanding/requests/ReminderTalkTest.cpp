// SPDX-License-Identifier: MIT
// Catches a reminder that goes on though it was cancelled, or goes though nobody agreed, and words of a time that get
// lost between two turns.
#include "QuorvellCore/text/Json.h"
#include "RuleBench.h"
#include "Understanding/requests/SkillTable.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace quorvell {

TEST(ReminderTalk, doesWhatWasAgreedAndKeepsWhatWasSaid)
{
    checkConversations("talk.txt", withCalendar(), {{"=nothingDue", nothingDue}});
}

/// As many as one request may change, and not one more; what is left can be asked for anew.
TEST(ReminderTalk, deletesNoMoreAtOnceThanARequestMayChange)
{
    constexpr int there = 23;
    constexpr int atOnce = 20;
    Json list = {{"status", "reminders"}, {"reminders", Json::array()}};
    for (int number = 1; number <= there; ++number)
        list["reminders"].push_back({{"id", std::to_string(number)}, {"task", "Task " + std::to_string(number)}});
    RequestMemory memory;
    ToolRequest call;
    const auto say = [&](const std::string& line) {
        const RuleStep step = followed(line, call, memory, withCalendar());
        memory = step.memory;
        if (const auto* request = std::get_if<ToolRequest>(&step.answer))
            call = *request;
        return shown(step);
    };
    EXPECT_EQ(say("delete all my reminders"), R"(set_reminder {"list":true})");
    EXPECT_EQ(say(dumpJson(list)),
        "You have 23 reminders. Task 1. Task 2. Task 3. Task 4. Task 5. The others are in your notebook. Should I "
        "really "
        "delete the first 20?");
    std::string next = say("yes");
    for (int number = 1; number <= atOnce; ++number) {
        const std::string id = std::to_string(number);
        ASSERT_EQ(next, R"(set_reminder {"cancel":true,"id":")" + id + R"(","series":true})");
        next = say(dumpJson({{"status", "done"}, {"id", id}, {"task", "Task " + id}}));
    }
    EXPECT_EQ(next, "20 reminders are deleted. Their notes stay in your notebook.");
}

TEST(ReminderTalk, understandsStrangers)
{
    checkConversations("reminders.txt", withCalendar());
}

TEST(ReminderTalk, saysWhatWasDone)
{
    struct Row {
        const char* arguments;
        const char* result;
        const char* what;
    };
    constexpr Row rows[] = {
        {R"({"text":"remind me to call Ana at 5 pm"})",
            R"({"status":"set","task":"Call Ana","when":"Sunday 22 November at 5 PM"})",
            "set a reminder to call Ana, on Sunday the 22nd of November at 5 PM"},
        {R"({"id":"a","repeat":"daily"})", R"({"status":"set","task":"Rest","repeat_words":"Every day"})",
            "changed the reminder to rest, every day"},
        {R"({"id":"a","later":"friday"})", R"({"status":"deferred","task":"Rest","when":"Friday 27 November at 5 PM"})",
            "moved the reminder to rest to Friday the 27th of November at 5 PM"},
        {R"({"cancel":true})", R"({"status":"done","task":"Rest"})", "deleted the reminder to rest"},
        {R"({"done":true})", R"({"status":"done","task":"Rest"})", "ticked off the reminder to rest"},
        {R"({"list":true})", R"({"status":"reminders","reminders":[]})", ""},
        {R"({"text":"remind me"})", R"({"status":"needs_task"})", ""},
    };
    for (const Row& row : rows) {
        const auto result = ToolResult::parse(row.result);
        ASSERT_TRUE(result) << row.result;
        EXPECT_EQ(
            SkillTable::ofCall({"set_reminder", row.arguments})->whatWasDone({"set_reminder", row.arguments}, *result),
            row.what);
    }
}

} // namespace quorvell
