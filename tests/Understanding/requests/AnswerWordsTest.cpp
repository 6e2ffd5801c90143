// SPDX-License-Identifier: MIT
// Catches an answer that is not taken in its everyday dress, and words of something else that settle a question or
// become a text to write down.
#include "Understanding/requests/AnswerWords.h"

#include "RuleBench.h"
#include "Understanding/requests/ForMe.h"

#include <gtest/gtest.h>

namespace quorvell {

TEST(AnswerWords, areYesOrNoInAnyDress)
{
    using Verdict = AnswerWords::Verdict;
    const struct {
        const char* question;
        Verdict verdict;
        std::vector<const char*> answers;
    } rows[] = {
        {"Shall I delete \"Vet\" on Friday?", Verdict::yes,
            {"y", "yess", "yep", "k", "ok do it", "delete it yes", "nah, yes I mean"}},
        {"Shall I delete \"Vet\" on Friday?", Verdict::no,
            {"no keep it", "keep it", "nah leave it", "don't", "nope", "no don't delete it", "not now",
                "no, leave it as it is", "I changed my mind, keep it"}},
        {"Shall I delete \"Vet\" on Friday?", Verdict::none,
            {"the second one", "no, the other one", "delete the dentist", "is that a monday", "keep the list",
                "no, on friday"}},
        {"Should I make a note of that?", Verdict::none, {"keep it", "make it two notes"}},
    };
    for (const auto& row : rows)
        for (const char* answer : row.answers)
            EXPECT_EQ(AnswerWords::verdict(answer, row.question), row.verdict) << row.question << ' ' << answer;
    for (const char* answer : {"no leave it", "don't bother", "no need"})
        EXPECT_TRUE(AnswerWords::declines(answer)) << answer;
    for (const char* answer : {"no, at 9", "keep it", "leave the house", "tomorrow"})
        EXPECT_FALSE(AnswerWords::declines(answer)) << answer;
}

TEST(AnswerWords, ofSomethingElseAreNoText)
{
    for (const char* other : {"change it to 7 from now on", "is that a monday", "what did I say", "too", "louder",
             "takes two hours", "except sunday", "she can't, make it saturday"})
        EXPECT_TRUE(AnswerWords::isNoText(other)) << other;
    for (const char* text : {"call the plumber", "make dinner", "change the tyres", "the vet", "set the table"})
        EXPECT_FALSE(AnswerWords::isNoText(text)) << text;
    const RuleSurroundings around = surroundings();
    for (const char* other : {"tomorrow too", "on friday as well", "weekdays only sorry"})
        EXPECT_TRUE(AnswerWords::isBareTime(other, around)) << other;
    for (const char* text : {"tomorrow", "call mom tomorrow", "too"})
        EXPECT_FALSE(AnswerWords::isBareTime(text, around)) << text;
}

TEST(AnswerWords, doThatForMeIsACourtesyBehindARequest)
{
    const struct {
        const char* said;
        const char* meant;
    } rows[] = {
        {"add milk to the list, can you do that for me please?", "add milk to the list"},
        {"I forgot to put bananas on the grocery list, can you do it for me? Also oranges.",
            "put bananas and oranges on the grocery list"},
        {"do it for me", "do it for me"},
        {"show me how to print, then do it for me", "show me how to print, then do it for me"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(ForMe::removed(row.said), row.meant);
}

} // namespace quorvell
