// SPDX-License-Identifier: MIT
// Catches a yes that belongs to another question, or to one that was never put.
#include "QuorvellCore/safety/PendingConsent.h"

#include <gtest/gtest.h>

#include <vector>

namespace quorvell {

TEST(PendingConsent, takesOnlyAYesToThisVeryQuestion)
{
    using namespace std::chrono_literals;
    using Answer = PendingConsent::Answer;
    const std::string question = "Shall I remember this about you: likes tea?";
    struct Row {
        const char* name;
        std::vector<std::string> said; ///< The assistant's and, behind ">", the user's.
        Answer answer;
    };
    const Row rows[] = {
        {"asked and answered", {question, ">yes please"}, Answer::yes},
        {"in other letters, behind a statement", {"Noted so far. shall I remember this about you – likes tea", ">yes"},
            Answer::yes},
        {"the weather in its place", {"Would you like the weather?", ">yes please"}, Answer::borrowed},
        {"the weather without its mark", {"tell me when you want the weather", ">yes please"}, Answer::borrowed},
        {"the weather behind it", {question + " And shall I tell the weather?", ">yes please"}, Answer::borrowed},
        {"the weather before it", {"Weather? " + question, ">yes please"}, Answer::borrowed},
        {"the weather after it", {question, "Or the weather？", ">yes"}, Answer::borrowed},
        {"the weather after the yes", {question, ">yes", "Fine. Want me to tell the weather", ">yes"},
            Answer::borrowed},
        {"asked again after the weather", {"The weather?", question, ">yes"}, Answer::borrowed},
        {"in other words", {"Do you like tea?", ">yes"}, Answer::borrowed},
        {"not the last that was said", {question, "It is five o'clock.", ">yes"}, Answer::none},
        {"broken off", {"Shall I remember this about you:", ">yes"}, Answer::borrowed},
        {"never put", {">yes"}, Answer::none},
        {"not answered", {question}, Answer::none},
        {"as it is typed", {question, ">Yess!"}, Answer::yes},
        {"taken back", {question, ">yes", ">no wait"}, Answer::no},
        {"a word in between", {question, ">yes", "One moment.", ">please"}, Answer::yes},
        {"something else", {question, ">what time is it"}, Answer::no},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        PendingConsent consent(question);
        for (const std::string& words : row.said) {
            if (words.starts_with('>'))
                consent.userSaid({words.substr(1), words.substr(1), HeardUtterance::How::typed});
            else
                consent.assistantSaid(words, 0ms);
        }
        EXPECT_EQ(consent.answer(0ms), row.answer);
        if (row.answer == Answer::yes) {
            EXPECT_EQ(consent.answer(PendingConsent::longestMemory), Answer::yes);
            EXPECT_EQ(consent.answer(PendingConsent::longestMemory + 1ms), Answer::none);
        }
    }
}

} // namespace quorvell
