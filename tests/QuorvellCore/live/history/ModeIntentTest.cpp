// SPDX-License-Identifier: MIT
// Catches help modes switched by words that ask for none.
#include "QuorvellCore/live/history/ModeIntent.h"

#include <gtest/gtest.h>

namespace quorvell {

TEST(ModeIntent, onlyWordsThatAskForAModeAreARequest)
{
    for (const char* words : {"Do it for me.", "okay, can you just do that for me?", "no do it all for me please",
             "Hey Quorvell, please take over", "you do it", "Could you handle the rest for me", "switch to do mode",
             "Go back to Do mode, please"})
        EXPECT_EQ(ModeIntent::requested(words), HelpMode::do_) << words;
    for (const char* words :
        {"just show me", "Can you show me how to add a contact?", "I’d rather you guide me", "let me do it myself",
            "no thanks, I'll do it myself", "just tell me where to click", "guide mode please", "Walk me through it.",
            "don't do it for me, just show me", "switch from do to guide", "do it for me, no, switch to guide"})
        EXPECT_EQ(ModeIntent::requested(words), HelpMode::guide) << words;
    for (const char* words : {"switch to auto", "Put it back in automatic mode, thanks",
             "Could we use auto mode from now on?", "not guide, auto mode"})
        EXPECT_EQ(ModeIntent::requested(words), HelpMode::auto_) << words;

    for (const char* words : {"", "yes", "just do it", "do it", "Auto mode?", "what is auto mode",
             "What does do mode do?", "should I switch to auto?", "are you in guide mode?", "don't do it for me",
             "please don't switch to auto", "I don't want you to do it for me", "never take over", "turn off auto mode",
             "do it for me if it gets too hard", "can you do it for me when I ask?", "if I say so do it for me",
             "she said do it for me", "the page says switch to auto", "auto mode is annoying", "show me my notes",
             "take over the world", "you do it for me?", "remind me to do it myself", "I like it when you do it for me",
             "find the driver's guide"})
        EXPECT_EQ(ModeIntent::requested(words), std::nullopt) << words;
    EXPECT_EQ(ModeIntent::requested(std::string(3000, ' ') + "do it for me"), std::nullopt);
}

} // namespace quorvell
