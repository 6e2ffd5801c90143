// SPDX-License-Identifier: MIT
// Catches people who are cut off in mid-sentence, and those who wait for an answer to all that they have said.
#include "Understanding/requests/UtteranceShape.h"

#include "RuleBench.h"
#include "Understanding/dialogue/ToolResults.h"

#include <gtest/gtest.h>

namespace quorvell {

namespace {

const char* nameOf(UtteranceShape shape)
{
    return shape == UtteranceShape::whole ? "whole" : shape == UtteranceShape::open ? "open" : "hanging";
}

} // namespace

TEST(UtteranceShape, isWholeOnlyWhereNobodyGoesOn)
{
    struct Row {
        UtteranceShape shape;
        std::vector<const char*> words;
    };
    const Row rows[] = {
        {UtteranceShape::whole,
            {"remind me tomorrow at 5 pm to call the dentist", "remind me to buy milk tomorrow at 9 am",
                "remind me in half an hour to stretch", "remind me every monday at 7 am to go running",
                "put lunch with ana in my calendar on friday at 1 pm", "what do i have on saturday", "never mind",
                "move the dentist to thursday at 10 am", "undo that", "stop the timer", "turn off all my alarms",
                "add milk and eggs to my shopping list", "make it 10 minutes longer", "what time is it in chicago",
                "when is my next meeting", "how many days until christmas"}},
        {UtteranceShape::open,
            {"keep a note that the plumber", "wake me up at 7 am", "remind me to call the dentist at 5 pm",
                "what's on my calendar", "thank you", "hey quorvell", "remind me to drive home in 2 hours", "no",
                "is there an alarm at 7", "cancel my alarm", "read me the weather"}},
        {UtteranceShape::hanging,
            {"", "remind me", "remind me to", "remind me tomorrow at 5", "remind me tomorrow", "remind me in 20",
                "remind me tomorrow at 5 pm to", "remind me tomorrow at 5 pm to call",
                "remind me tomorrow at 5 pm to call the", "remind me tonight at 8 to take out", "put lunch with",
                "move the dentist to thursday at", "remind me every monday", "remind me to pay the rent on monday",
                "what do i have on", "don't let me forget to call mum tonight",
                "remind me on friday at noon to renew you", "remember that", "note down that", "add milk to my",
                "set a timer"}},
    };
    for (const Row& row : rows) {
        for (const char* words : row.words)
            EXPECT_STREQ(nameOf(shapeOf(words, {}, withCalendar())), nameOf(row.shape)) << words;
    }
}

TEST(UtteranceShape, takesTheAnswerToAQuestionForWhole)
{
    RequestMemory memory;
    memory.pending = {.kind = &ToolResults::confirmation,
        .question = "Should I remember that?",
        .tool = "remember_about_them",
        .arguments = R"({"fact":"allergic to nuts"})"};
    EXPECT_EQ(shapeOf("yes please", memory, withCalendar()), UtteranceShape::whole);
    EXPECT_EQ(shapeOf("yes please", {}, withCalendar()), UtteranceShape::open);
}

} // namespace quorvell
