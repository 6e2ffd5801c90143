// SPDX-License-Identifier: MIT
// Catches requests that lead to the wrong tool call, question or answer.
#include "RuleBench.h"

#include <gtest/gtest.h>

namespace quorvell {

TEST(RequestRules, turnsRequestsIntoToolCallsOrReplies)
{
    checkConversations("requests.txt", surroundings());
}

TEST(RequestRules, answersFromNotebookClockAndSums)
{
    checkConversations("questions.txt", withCalendar());
    checkConversations("clock.txt", withCalendar());
    checkConversations("sums.txt", surroundings());
}

TEST(RequestRules, callsOnlyToolsThatTheSessionOffers)
{
    RuleSurroundings around = surroundings();
    around.tools = {"keep_note"};
    const auto said = [&](const char* words) { return shown(RequestRules::answerWords(words, {}, around)); };
    EXPECT_EQ(said("remind me at 5 pm to rest"), "I cannot set reminders in this conversation.");
    EXPECT_EQ(said("find my note about tea"), "I cannot look into your notebook in this conversation.");
    EXPECT_EQ(said("what is the capital of France"), "I don't know that: looking things up needs an online model.");
    EXPECT_EQ(said("note that tea is out"), R"(keep_note {"title":"Tea","text":"Tea is out"})");
}

TEST(RequestRules, takesAnswersToWhatItAsked)
{
    checkConversations("answers.txt", surroundings(),
        {{"=which",
             R"({"status":"which_time","task":"Call the dentist","repeat":"daily","choices":[{"date":"2026-11-22 05:00","when":"Sunday 22 November at 5 AM"},{"date":"2026-11-22 17:00","when":"Sunday 22 November at 5 PM"}]})"},
            {"=plans",
                R"({"status":"found","count":3,"notes":[{"id":"a1","title":"Garden plan"},{"id":"b2","title":"House plan"},{"id":"c3","title":"Wifi password"}]})"}});
}

TEST(RequestRules, repeatsWhatItSaid)
{
    EXPECT_EQ(shown(RequestRules::answerWords("repeat that", {.lastReply = "You are welcome."}, surroundings())),
        "You are welcome.");
}

} // namespace quorvell
