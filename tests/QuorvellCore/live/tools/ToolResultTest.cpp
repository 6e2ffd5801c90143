// SPDX-License-Identifier: MIT
// Results as they are built by tools and read from whoever sent them.
#include "QuorvellCore/live/tools/ToolResult.h"

#include <gtest/gtest.h>

namespace quorvell {

TEST(ToolResult, crossesAsTheObjectThatItWasBuiltFrom)
{
    struct Row {
        ToolResult result;
        const char* json;
    };
    ToolResult asking(ToolStatus::needsConfirmation);
    asking.addAll({{"id", "a"}, {"title", "Gym"}}).ask("Shall I?").advise("Ask.").add("past", true);
    const Row rows[] = {
        {ToolResult(ToolStatus::kept), R"({"status":"kept"})"},
        {asking,
            R"({"status":"needs_confirmation","id":"a","title":"Gym","question":"Shall I?","message":"Ask.","past":true})"},
        {ToolResult::failed("The disk is full."), R"({"error":"The disk is full."})"},
        {ToolResult::of({{"ok", true}}), R"({"ok":true})"},
        {ToolResult::of(7), R"({"result":7})"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(dumpJson(row.result.json()), row.json);
        EXPECT_EQ(ToolResult::parse(row.json), row.result) << row.json;
    }
}

TEST(ToolResult, readsWhateverComes)
{
    struct Row {
        std::string text;
        ToolStatus status;
        const char* forUser = "";
        const char* forModel = "";
    };
    const Row rows[] = {
        {R"({"status":"which_time","message":"Ask."})", ToolStatus::whichTime, "", "Ask."},
        {R"({"status":"needs_confirmation","question":"Shall I?"})", ToolStatus::needsConfirmation, "Shall I?"},
        {R"({"status":"read","question":"What is a kettle?"})", ToolStatus::read},
        {R"({"status":"clicked"})", ToolStatus::other},
        {R"({"status":""})", ToolStatus::other},
        {R"({"status":7,"question":{},"message":[]})", ToolStatus::none},
        {R"({"ok":true})", ToolStatus::none},
        {R"({"status":"kept","error":"Full.","message":"Ask."})", ToolStatus::failed, "", "Full."},
        {R"({"ok":false,"error":{"code":7}})", ToolStatus::failed},
        {R"({"status":"kept","error":null})", ToolStatus::kept},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const auto result = ToolResult::parse(row.text);
        ASSERT_TRUE(result);
        EXPECT_EQ(result->status(), row.status);
        EXPECT_EQ(result->wordsForUser(), row.forUser);
        EXPECT_EQ(result->wordsForModel(), row.forModel);
        EXPECT_FALSE(result->failure());
    }
    for (const std::string& text : {std::string(), std::string("kept"), std::string("[]"), std::string(R"({"status":)"),
             R"({"text":")" + std::string(ToolResult::longestText, 'a') + "\"}", std::string(100'000, '[')})
        EXPECT_FALSE(ToolResult::parse(text)) << text.substr(0, 20);
}

TEST(ToolResult, failuresThatAreToldApart)
{
    for (const auto failure :
        {ToolFailure::noReminderWithID, ToolFailure::noReminderWithWords, ToolFailure::noReminderDue}) {
        EXPECT_FALSE(sentenceOf(failure).empty());
        EXPECT_EQ(ToolResult::parse(dumpJson(ToolResult::failed(sentenceOf(failure)).json()))->failure(), failure);
    }
    ToolResult advice(ToolStatus::refused);
    advice.advise(std::string(sentenceOf(ToolFailure::noReminderDue)));
    EXPECT_FALSE(advice.failure()) << "only failures have one";
}

} // namespace quorvell
