// SPDX-License-Identifier: MIT
// Catches an act that is not taken back, or the wrong one, a question that holds somebody fast or gets lost, and claims
// about what was done.
#include "RuleBench.h"

#include <gtest/gtest.h>

namespace quorvell {

TEST(Repair, takesBackPutsRightAndPutsAside)
{
    checkConversations("repairs.txt", withCalendar());
}

TEST(Repair, whatOneRequestChangedIsTakenBackAsOne)
{
    RequestMemory memory{.turn = 7};
    for (const char* token : {"u1", "u2"}) {
        const std::string result = R"({"status":"done","task":"Rest","undo":")" + std::string(token) + R"("})";
        memory =
            RequestRules::answerResult({"set_reminder", R"({"cancel":true})"}, result, memory, withCalendar()).memory;
    }
    RuleStep step = RequestRules::answerWords("undo that", memory, withCalendar());
    EXPECT_EQ(shown(step), R"(set_reminder {"undo":"u2"})");
    step = RequestRules::answerResult(
        {"set_reminder", R"({"undo":"u2"})"}, R"({"status":"undone"})", step.memory, withCalendar());
    EXPECT_EQ(shown(step), R"(set_reminder {"undo":"u1"})");
}

TEST(Repair, keepsNoMoreActsThanItShould)
{
    RequestMemory memory;
    for (std::size_t number = 0; number < RequestMemory::mostActs + 5; ++number) {
        ++memory.turn;
        const std::string result = R"({"status":"kept","undo":"u)" + std::to_string(number) + R"("})";
        memory = RequestRules::answerResult({"keep_note", "{}"}, result, memory, withCalendar()).memory;
    }
    EXPECT_EQ(memory.acts.size(), RequestMemory::mostActs);
    EXPECT_EQ(memory.acts.back().undo->arguments, R"({"undo":"u54"})");
}

} // namespace quorvell
