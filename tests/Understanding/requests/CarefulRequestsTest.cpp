// SPDX-License-Identifier: MIT
// Catches what is put into the calendar, set or written down though nobody asked for it, or at a time nobody named.
#include "RuleBench.h"
#include "Understanding/requests/RequestMood.h"

#include <gtest/gtest.h>

namespace quorvell {

TEST(CarefulRequests, writeOnlyWhatWasWishedAndUnderstood)
{
    checkConversations("careful.txt", withCalendar());
}

/// With a screen to work; without one the words fall to nobody.
TEST(CarefulRequests, whatIsDoneOnTheScreenWaitsForAYes)
{
    RuleSurroundings around = withCalendar();
    EXPECT_TRUE(
        shown(RequestRules::answerWords("press send", {}, around)).starts_with("I did not understand that, or"));
    around.tools.insert({"do_task", "confirm_action"});
    checkConversations("screen.txt", around);
}

TEST(CarefulRequests, aPoliteWishStaysOne)
{
    for (const char* words : {"remind me about the meeting", "what about 6 pm?", "when I get home, remind me",
             "do the dishes", "tell me tomorrow at 9 am to stretch", "can the dentist wait until monday",
             "I put the key under the pot, remember that", "give me a nudge at 5 pm",
             "the dentist, can we make that friday?"})
        EXPECT_EQ(moodOf(words), RequestMood::wish) << words;
}

} // namespace quorvell
