// SPDX-License-Identifier: MIT
// Catches a reminder that goes on though it was cancelled, or goes though nobody agreed, and words of a time that get
// lost between two turns.
#include "QuorvellCore/text/Json.h"
#include "RuleBench.h"

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

} // namespace quorvell
