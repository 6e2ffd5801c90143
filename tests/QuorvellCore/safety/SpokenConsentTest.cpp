// SPDX-License-Identifier: MIT
// Catches answers taken for a yes that are none.
#include "QuorvellCore/safety/SpokenConsent.h"

#include <gtest/gtest.h>

namespace quorvell {

TEST(SpokenConsent, onlyAClearYesIsOne)
{
    for (const char* yes :
        {"okay", "Yes.", "yes please send it", "uh okay, go ahead", "Oh, well — yeah, sure!", "All right then",
            "All right, all right", "of course", "that’s fine", "THAT'S RIGHT", "hmm yes", "send the email now",
            "please delete it", "go on then, thank you", "“Yes!”", "yes...\u00a0please;", "'ok'"}) {
        EXPECT_TRUE(SpokenConsent::isAffirmative(yes)) << yes;
        EXPECT_FALSE(SpokenConsent::hesitates(yes)) << yes;
    }
    for (const char* other : {"", " ... ", "hmm", "um and so", "it", "delete it", "yes the blue one", "yes yesterday",
             "oküy", "yes да", "yes/please", "yes…", "ye\u200bs", "yеs", "yes 👎", "yes 2"}) {
        EXPECT_FALSE(SpokenConsent::isAffirmative(other)) << other;
        EXPECT_FALSE(SpokenConsent::hesitates(other)) << other;
    }
    for (const char* doubt : {"yes but wait", "no", "okay, not yet", "don’t", "of course not", "Hold on.",
             "yes hold on", "sure, in a minute", "go away", "yes then again", "go ahead if you can", "send it?",
             "okay then what", "maybe", "I guess so", "never mind", "okay just a thing", "yes one thing",
             "yes, hold\u00a0on", "yes no_1"}) {
        EXPECT_FALSE(SpokenConsent::isAffirmative(doubt)) << doubt;
        EXPECT_TRUE(SpokenConsent::hesitates(doubt)) << doubt;
    }
}

TEST(SpokenConsent, maySayTheQuestionAgain)
{
    constexpr const char* question = "Shall I remember this about you: Their doctor is Dr Lee?";
    for (const char* yes : {"yes", "yes, please remember it", "sure, remember that", "yes, Dr Lee is the doctor"})
        EXPECT_TRUE(SpokenConsent::agreesTo(question, yes)) << yes;
    for (const char* other :
        {"remember it", "no, do not remember it", "yes, but remember Dr Ray", "Dr Lee", "shall I?"})
        EXPECT_FALSE(SpokenConsent::agreesTo(question, other)) << other;
}

} // namespace quorvell
