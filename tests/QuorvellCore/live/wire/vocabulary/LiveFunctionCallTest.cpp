// SPDX-License-Identifier: MIT
// Catches tool calls whose arguments are misread or were cut off unseen.
#include "QuorvellCore/live/wire/vocabulary/LiveFunctionCall.h"

#include "QuorvellCore/live/wire/openai/OpenAILiveEventMapper.h"

#include <gtest/gtest.h>

#include <tuple>

namespace quorvell {

TEST(LiveFunctionCall, knowsWhenItWasCutOff)
{
    const std::tuple<const char*, bool, bool, const char*> rows[] = {
        {R"({"text":"a"})", false, false, R"({"text":"a"})"},
        {"", false, false, "{}"},
        {" \n", false, false, "{}"},
        {R"({"text":"a)", false, true, R"({"_cut_off":true})"},
        {"[1]", false, true, R"({"_cut_off":true})"},
        {R"({"text":"a"})", true, true, R"({"text":"a","_cut_off":true})"},
        {R"({"_cut_off":false})", false, true, R"({"_cut_off":false})"},
    };
    for (const auto& [arguments, incomplete, cutOff, args] : rows) {
        SCOPED_TRACE(arguments);
        const auto call = LiveFunctionCall::fromArgumentsText("c", "n", arguments, incomplete);
        EXPECT_EQ(call.wasCutOff(), cutOff);
        EXPECT_EQ(dumpJson(call.args), args);
    }
}

TEST(LiveFunctionCall, readsArguments)
{
    const auto call = LiveFunctionCall::fromArgumentsText("c", "n",
        R"({"i":3,"d":2.5,"t":" -4e1 ","p":"+5","pm":"+-5","b":true,"x":"3 apples","h":"0x10",
            "inf":"inf","nan":"nan","e":"","s":"a","n":null})",
        false);
    const std::pair<const char*, std::optional<double>> rows[] = {{"i", 3}, {"d", 2.5}, {"t", -40}, {"p", 5},
        {"pm", {}}, {"b", {}}, {"x", {}}, {"h", {}}, {"inf", {}}, {"nan", {}}, {"e", {}}, {"n", {}}, {"absent", {}}};
    for (const auto& [key, number] : rows)
        EXPECT_EQ(call.number(key), number) << key;
    EXPECT_EQ(call.string("s"), "a");
    EXPECT_EQ(call.string("i"), std::nullopt);
}

TEST(OpenAILiveEventMapper, speaksTheSessionsVocabulary)
{
    using namespace live_event;
    const LiveFunctionCall whole{"c", "n", Json{{"a", 1}}};
    const LiveFunctionCall cutOff{"c", "n", Json{{"_cut_off", true}}};
    const std::tuple<const char*, OpenAILiveEvent, std::vector<LiveServerEvent>> rows[] = {
        {"started", openai_event::Started{"s"}, {SetupComplete{"s"}}},
        {"audio", openai_event::Audio{{1, 2}}, {Audio{{1, 2}}}},
        {"user's words", openai_event::InputTranscript{"hi"}, {InputTranscript{"hi"}}},
        {"voice's words", openai_event::OutputTranscript{"hi"}, {OutputTranscript{"hi"}}},
        {"delegated", openai_event::Delegated{"d"}, {Delegated{"d"}}},
        {"call", openai_event::FunctionCall{"c", "n", R"({"a":1})", false}, {ToolCall{{whole}}}},
        {"call without an end", openai_event::FunctionCall{"c", "n", R"({"a":)", true}, {ToolCall{{cutOff}}}},
        {"reasoning break", openai_event::Reasoning{}, {Thinking{}}},
        {"usage", openai_event::Usage{4.5, 0.5}, {BilledSeconds{4.5}, ContextUsage{0.5}}},
        {"no usage", openai_event::Usage{}, {}},
        {"tokens", openai_event::BackendUsage{10, 4, 2},
            {Usage{12}, Diagnostic{"backend_usage", "input 10, cached 4, output 2"}}},
        {"text leaves only its length", openai_event::BackendText{"año"}, {Diagnostic{"backend_text", "3 characters"}}},
        {"error", openai_event::Error{"code", "No.", "create_1"},
            {ServerError{"code", "The service reported a problem (No.). Ask again.", "create_1"}}},
        {"error without words", openai_event::Error{},
            {ServerError{{}, "The service reported a problem without saying which. Ask again."}}},
        {"closed", openai_event::Closed{"unknown"}, {Diagnostic{"session_closed", "unknown"}}},
    };
    for (const auto& [name, event, mapped] : rows)
        EXPECT_TRUE(OpenAILiveEventMapper::map(event) == mapped) << name;
}

} // namespace quorvell
