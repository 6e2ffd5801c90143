#include "QuorvellCore/live/history/ModeIntent.h"

#include <gtest/gtest.h>

namespace quorvell {

TEST(ModeIntent, onlyWordsThatAskForAModeAreARequest)
{
    constexpr auto guide = HelpMode::guide;
    constexpr auto automatic = HelpMode::auto_;
    constexpr auto doing = HelpMode::do_;
    constexpr auto none = std::nullopt;
    struct Row {
        const char* words;
        std::optional<HelpMode> mode;
    };
    const Row rows[] = {
        {"Do it for me.", doing},
        {"okay, can you just do that for me?", doing},
        {"no do it all for me please", doing},
        {"Hey Quorvell, please take over", doing},
        {"you do it", doing},
        {"Could you handle the rest for me", doing},
        {"switch to do mode", doing},
        {"Go back to Do mode, please", doing},
        {"just show me", guide},
        {"Can you show me how to add a contact?", guide},
        {"I’d rather you guide me", guide},
        {"let me do it myself", guide},
        {"no thanks, I'll do it myself", guide},
        {"just tell me where to click", guide},
        {"guide mode please", guide},
        {"Walk me through it.", guide},
        {"don't do it for me, just show me", guide},
        {"switch from do to guide", guide},
        {"switch to auto", automatic},
        {"Put it back in automatic mode, thanks", automatic},
        {"Could we use auto mode from now on?", automatic},
        {"not guide, auto mode", automatic},
        {"do it for me, no, switch to guide", guide},

        {"", none},
        {"yes", none},
        {"just do it", none},
        {"do it", none},
        {"Auto mode?", none},
        {"what is auto mode", none},
        {"What does do mode do?", none},
        {"should I switch to auto?", none},
        {"are you in guide mode?", none},
        {"don't do it for me", none},
        {"please don't switch to auto", none},
        {"I don't want you to do it for me", none},
        {"never take over", none},
        {"turn off auto mode", none},
        {"do it for me if it gets too hard", none},
        {"can you do it for me when I ask?", none},
        {"if I say so do it for me", none},
        {"she said do it for me", none},
        {"the page says switch to auto", none},
        {"auto mode is annoying", none},
        {"show me my notes", none},
        {"take over the world", none},
        {"you do it for me?", none},
        {"remind me to do it myself", none},
        {"I like it when you do it for me", none},
        {"find the driver's guide", none},
    };
    for (const Row& row : rows)
        EXPECT_EQ(ModeIntent::requested(row.words), row.mode) << row.words;
    EXPECT_EQ(ModeIntent::requested(std::string(3000, ' ') + "do it for me"), none);
}

} // namespace quorvell
