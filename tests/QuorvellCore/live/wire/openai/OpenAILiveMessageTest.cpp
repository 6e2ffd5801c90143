// SPDX-License-Identifier: MIT
// Catches messages to a session that say more or less than was set.
#include "QuorvellCore/live/wire/openai/OpenAILiveMessage.h"

#include "QuorvellCore/text/Characters.h"

#include <gtest/gtest.h>

#include <tuple>

namespace quorvell {

using Format = OpenAILiveMessage::AudioFormat;

TEST(OpenAILiveMessage, historySeedsTheLastTurnsCutToLength)
{
    OpenAILiveSetupOptions options;
    for (int turn = 0; turn < 200; ++turn)
        options.history.push_back({turn % 2 == 0 ? "user" : "assistant", "turn " + std::to_string(turn)});
    options.history[199].text = " \n\t ";
    options.history[198].text = "\n ";
    for (int letter = 0; letter < 5000; ++letter)
        options.history[198].text += "e\u0301"; // one character of two code points
    const Json input = OpenAILiveMessage::session(options, Format::undeclared)["input"];
    ASSERT_EQ(input.size(), 127u); // the blank turn counts among the last 128
    EXPECT_EQ(input.front()["content"][0]["text"], "turn 72");
    EXPECT_EQ(input[1]["content"][0]["type"], "output_text");
    const auto cut = readString(input.back()["content"][0], "text").value_or("");
    EXPECT_EQ(characterCount(cut), 2000u);
    EXPECT_TRUE(cut.starts_with("e"));
}

TEST(OpenAILiveMessage, rolesOtherThanAssistantAreInput)
{
    OpenAILiveSetupOptions options;
    options.history = {{"Assistant", "a"}, {"system", "b"}};
    const Json session = OpenAILiveMessage::session(options, Format::undeclared);
    for (const Json& item : session["input"])
        EXPECT_EQ(item["content"][0]["type"], "input_text");
    options.history = {{"user", "  "}};
    EXPECT_FALSE(OpenAILiveMessage::session(options, Format::undeclared).contains("input"));
}

TEST(OpenAILiveMessage, reasoningIsSentOnlyAsFarAsItIsSet)
{
    using Text = std::optional<std::string>;
    const std::tuple<const char*, Text, Text, const char*> rows[] = {
        {"none turns the summary off", "none", "auto", R"({"effort":"none"})"},
        {"both", "high", "auto", R"({"effort":"high","summary":"auto"})"},
        {"summary alone", {}, "auto", R"({"summary":"auto"})"},
        {"neither", {}, {}, "null"},
    };
    for (const auto& [name, effort, summary, expected] : rows) {
        SCOPED_TRACE(name);
        OpenAILiveSetupOptions options;
        options.reasoningEffort = effort;
        options.reasoningSummary = summary;
        const Json backend = OpenAILiveMessage::backend(options);
        const Json* reasoning = memberOf(backend, "reasoning");
        EXPECT_EQ(reasoning ? dumpJson(*reasoning) : "null", expected);
    }
}

} // namespace quorvell
