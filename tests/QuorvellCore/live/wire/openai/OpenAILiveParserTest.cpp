// SPDX-License-Identifier: MIT
// Catches events of a server misread, or made of what cannot be read.
#include "QuorvellCore/live/wire/openai/OpenAILiveParser.h"

#include "FixtureTable.h"

#include <nlohmann/json.hpp>

namespace quorvell {

namespace {

std::string wrapped(const std::string& event)
{
    return R"({"type":"response.event","event":)" + event + "}";
}

} // namespace

TEST(OpenAILiveParser, whatCannotBeReadGivesNoEvent)
{
    auto rows = test::fixtureRows("live/openai.unreadable.txt", 1);
    rows.push_back({"nothing", {""}});
    rows.push_back(
        {"too deep", {R"({"type":"session.closed","a":)" + std::string(100, '[') + std::string(100, ']') + "}"}});
    const std::string id(OpenAILiveParser::longestID + 1, 'i');
    for (const std::string& event : {R"({"type":"response.created","response":{"id":")" + id + R"("}})",
             R"({"type":"response.completed","response":{"id":")" + id + R"("}})",
             R"({"type":"response.output_item.done","item":{"type":"function_call","name":"n","call_id":")" + id
                 + R"("}})",
             R"({"type":"response.output_item.done","item":{"type":"function_call","call_id":"c","name":")" + id
                 + R"("}})"})
        rows.push_back({"an id longer than any", {wrapped(event)}});
    for (const auto& [name, lines] : rows)
        EXPECT_TRUE(OpenAILiveParser::parse(lines[0]).empty()) << name << lines[0];
}

TEST(OpenAILiveParser, payloadsThatMayBeMissing)
{
    using namespace openai_event;
    const std::string tokens = R"("usage":{"input_tokens":9e99,"output_tokens":-3,"input_tokens_details":7})";
    const std::pair<std::string, std::vector<OpenAILiveEvent>> rows[] = {
        {R"({"type":"session.closed"})", {Closed{"unknown"}}},
        {R"({"type":"session.usage.updated","usage":{"seconds":3}})", {Usage{3, std::nullopt}}},
        {R"({"type":"session.usage.updated","context_window":{"usage_ratio":1}})", {Usage{std::nullopt, 1}}},
        {R"({"type":"error"})", {Error{}}},
        {R"({"type":"error","client_event_id":"outer","error":{"client_event_id":"inner"}})", {Error{{}, {}, "inner"}}},
        {wrapped(R"({"type":"response.failed","response":{"id":"r","status":null}})"), {BackendEnded{"r", "failed"}}},
        {wrapped(R"({"type":"response.cancelled","response":{"id":"r"}})"), {BackendEnded{"r", "cancelled"}}},
        {wrapped(R"({"type":"response.incomplete","response":{"id":"r"}})"), {BackendEnded{"r", "incomplete"}}},
        {wrapped(R"({"type":"response.done","response":{"id":"r","status":"failed"}})"), {BackendEnded{"r", "failed"}}},
        {wrapped(R"({"type":"response.completed","response":{"id":"r",)" + tokens + "}}"),
            {BackendEnded{"r", "completed"}, BackendUsage{}}},
        {wrapped(R"({"type":"response.output_item.done","item":{"type":"function_call","call_id":"c","name":"n"}})"),
            {FunctionCall{"c", "n", "", false}}},
        {wrapped(R"({"type":"response.output_item.done",
            "item":{"type":"function_call","call_id":"c","name":"n","arguments":{"a":1}}})"),
            {FunctionCall{"c", "n", R"({"a":1})", false}}},
        {R"({"type":"session.output_audio.delta","delta":""})", {Audio{}}},
        {R"({"type":"session.output_audio.delta","delta":"\u0041AAA"})", {Audio{{0, 0, 0}}}},
    };
    for (const auto& [message, events] : rows)
        EXPECT_TRUE(OpenAILiveParser::parse(message) == events) << message;
}

/// Sound is read without a JSON parser where its message is as plain as usual; the answer must not depend on it.
TEST(OpenAILiveParser, soundIsTheSameHoweverItIsWritten)
{
    const std::string type = R"("type":"session.output_audio.delta")";
    const std::pair<std::string, bool> rows[] = {
        {"{" + type + R"(,"delta":"AAAA"})", true},
        {" {\t" + type + "\r\n , \"delta\" : \"AAAA\" } \n", true},
        {R"({"delta":"AAAA","event_id":"e",)" + type + "}", true},
        {R"({"delta":"AAAA","n":{"delta":"////"},)" + type + "}", true},
        {"{" + type + R"(,"note":"\\\"","delta":"AAAA"})", true},
        {"{" + type + R"(,"note":"é","delta":"AAAA"})", true},
        {"{" + type + R"(,"delta":"////","delta":"AAAA"})", true},
        {"{" + type + R"(,"delta":"\u0041AAA"})", true},
        {"{" + type + R"(,"delta":"AAAA"})" + "x", false},
        {"{" + type + R"(,"delta":"AAAA",})", false},
        {"{" + type + R"(,"delta":"AAAA")", false},
        {"{" + type + R"( "delta":"AAAA"})", false},
        {"{," + type + R"(,"delta":"AAAA"})", false},
        {"{" + type + ",\"note\":\"\xff\",\"delta\":\"AAAA\"}", false},
        {"{" + type + ",\"note\":\"a\nb\",\"delta\":\"AAAA\"}", false},
        {"{" + type + ",\"delta\":\"AA\nAA\"}", false},
        {"{" + type + ",\"delta\":\"a\nb\",\"delta\":\"AAAA\"}", false},
        {"{" + type + R"(,"type":"session.closed","delta":"AAAA"})", false},
    };
    for (const auto& [message, isRead] : rows) {
        const auto events = OpenAILiveParser::parse(message);
        const bool isSound = events == std::vector<OpenAILiveEvent>{openai_event::Audio{{0, 0, 0}}};
        EXPECT_EQ(isSound, isRead) << message;
    }
}

} // namespace quorvell
