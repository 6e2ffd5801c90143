// SPDX-License-Identifier: MIT
// Catches a typed conversation, sent whole each time, that forgets what it had in mind.
#include "LiveService/protocols/TypedConversation.h"

#include <gtest/gtest.h>

namespace quorvell {

TEST(TypedConversation, findsAgainWhatItHadInMind)
{
    using openai_item::FunctionCall;
    using openai_item::FunctionOutput;
    using openai_item::Message;
    const std::chrono::sys_days day = std::chrono::year(2026) / 11 / 21;
    const RuleSurroundings around{
        {day + std::chrono::hours(12), *Calendar::create("Europe/Berlin", "en_US")}, {"set_reminder"}};
    const auto shown = [&](const std::vector<OpenAIItem>& items) {
        const RuleStep step = TypedConversation::answer(items, around);
        const auto* request = std::get_if<ToolRequest>(&step.answer);
        return request ? request->name + " " + request->arguments : std::get<std::string>(step.answer);
    };
    std::vector<OpenAIItem> items{Message{"user", "[They typed] remind me tomorrow at 5 to eat"}};
    EXPECT_EQ(shown(items), R"(set_reminder {"text":"remind me tomorrow at 5 to eat"})");
    items.push_back(FunctionCall{"c1", "set_reminder", R"({"text":"remind me tomorrow at 5 to eat"})"});
    items.push_back(FunctionOutput{"c1",
        R"({"status":"which_time","task":"Eat","choices":[{"date":"2026-11-22 05:00"},{"date":"2026-11-22 17:00"}]})"});
    EXPECT_EQ(shown(items), "Do you mean 5 in the morning or 5 in the afternoon?");
    items.push_back(Message{"assistant", "Do you mean 5 in the morning or 5 in the afternoon?"});
    items.push_back(Message{"user", "the afternoon"});
    EXPECT_EQ(shown(items), R"(set_reminder {"task":"Eat","date":"2026-11-22 17:00"})");
    items.push_back(Message{"user", "[Quorvell app event] The page changed."});
    EXPECT_EQ(shown(items), R"(set_reminder {"task":"Eat","date":"2026-11-22 17:00"})") << "nothing to answer in it";
    EXPECT_EQ(shown({FunctionOutput{"unknown", "{}"}}), "");
}

} // namespace quorvell
