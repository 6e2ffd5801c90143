// SPDX-License-Identifier: MIT
// Requests and answers of the Responses service. The messages written by hand hold both sides to the same protocol.
#include "Fixtures.h"
#include "QuorvellCore/live/wire/responses/ResponsesEndpoint.h"
#include "QuorvellCore/live/wire/responses/ResponsesRequestReader.h"
#include "QuorvellCore/live/wire/responses/ResponsesStreamParser.h"
#include "QuorvellCore/live/wire/responses/ResponsesStreamWriter.h"
#include "QuorvellCore/live/wire/transport/ServerSentEvents.h"

#include <gtest/gtest.h>

#include <numeric>
#include <tuple>

namespace quorvell {

namespace {

using namespace responses_event;
using Events = std::vector<ResponsesStreamEvent>;
using Status = OpenAIResponseEnd::Status;

const std::string reminderText = R"({"text":"tomorrow at 5 pm call the dentist"})";

ResponsesStreamEvent call(const char* id, const char* name, std::string_view arguments, bool incomplete)
{
    return LiveServerEvent(
        live_event::ToolCall{{LiveFunctionCall::fromArgumentsText(id, name, arguments, incomplete)}});
}

/// What the parser makes of a stream that arrives in pieces of `size` bytes.
Events readInPieces(std::string_view stream, std::size_t size)
{
    ServerSentEvents reader;
    ResponsesStreamParser parser;
    Events all;
    for (; !stream.empty(); stream.remove_prefix(std::min(size, stream.size()))) {
        for (const ServerSentEvent& event : reader.add(stream.substr(0, size)))
            for (ResponsesStreamEvent& read : parser.read(event.data))
                all.push_back(std::move(read));
    }
    return all;
}

/// Without the diagnostics, which are for the log.
Events readAll(const std::vector<const char*>& messages)
{
    ResponsesStreamParser parser;
    Events all;
    for (const char* message : messages)
        for (ResponsesStreamEvent& read : parser.read(message)) {
            const auto* live = std::get_if<LiveServerEvent>(&read);
            if (!live || !std::holds_alternative<live_event::Diagnostic>(*live))
                all.push_back(std::move(read));
        }
    return all;
}

} // namespace

TEST(ResponsesWire, requestsAreBuiltAndRead)
{
    using namespace openai_item;
    const char* tool = R"([{"type": "function", "name": "keep_note", "description": "Keeps a note.", "parameters":
        {"type": "object", "properties": {"title": {"type": "string"}}, "required": ["title"]}}])";
    const ResponsesRequest rows[] = {
        {"text-model", "Be brief.", {Message{"user", "Hello"}}},
        {"text-model", "Be “kind”.",
            {Message{"user", "What's this?", {{{0xff, 0xd8, 0xff, 0xe0}, "high"}}},
                FunctionCall{"call_1", "keep_note", R"({"title":"A kettle"})"},
                FunctionOutput{"call_1", R"({"status":"kept"})"}, Message{"assistant", "A kettle; it's noted."}},
            parseJson(tool).value_or(Json()), "low", "auto", "priority", "low", 4096, "resp_0"},
    };
    const char* names[] = {"smallest", "whole"};
    auto fixtures = fixtureLines("responses.request");
    for (std::size_t index = 0; index < std::size(rows); ++index) {
        const std::string text = fixtures[names[index]];
        EXPECT_EQ(ResponsesEndpoint{}.request("key", rows[index]).body, text);
        EXPECT_TRUE(std::get<ResponsesRequest>(ResponsesRequestReader::read(text)) == rows[index]) << names[index];
    }
}

TEST(ResponsesWire, whatCannotBeAnsweredIsNamed)
{
    const std::string known = R"({"model":"m","instructions":"i","stream":true,"input":)";
    const std::pair<std::string, const char*> rows[] = {
        {"", "no JSON object"},
        {R"({"instructions":"i","stream":true,"input":"x"})", "model"},
        {R"({"model":"m","instructions":"i","input":"x"})", "stream"},
        {known + "7}", "input"},
        {known + R"([{"type":"reasoning"}]})", "function_call_output"},
        {known + R"([{"type":"function_call","call_id":"c","name":"n"}]})", "arguments"},
        {known + R"([{"role":"robot","content":"x"}]})", "role"},
        {known + R"([{"role":"user","content":[{"type":"input_file"}]}]})", "content"},
    };
    for (const auto& [body, named] : rows) {
        const auto read = ResponsesRequestReader::read(body);
        const auto* report = std::get_if<OpenAIErrorReport>(&read);
        ASSERT_TRUE(report) << body;
        EXPECT_NE(report->message.find(named), std::string::npos) << report->message;
    }
    const auto plain = ResponsesRequestReader::read(known + R"("Hello"})");
    const std::vector<OpenAIItem> input = {openai_item::Message{"user", "Hello"}};
    EXPECT_TRUE(std::get<ResponsesRequest>(plain).input == input);
}

TEST(ResponsesWire, anAnswerReadsAlikeHoweverItIsCut)
{
    ResponsesStreamWriter writer("resp_1");
    const std::vector<std::string> pieces = {writer.created(), writer.reasoningDelta("Settling the day"),
        writer.textDelta("One “moment”"), writer.textDelta("."),
        writer.functionCall({"call_1", "set_reminder", reminderText, false}),
        writer.ended({"", Status::completed, openai_event::BackendUsage{1200, 1000, 34}, "default"})};
    const std::string stream = std::accumulate(pieces.begin(), pieces.end(), std::string());

    std::string byHand;
    std::ifstream file(std::filesystem::path(QUORVELL_FIXTURES) / "live" / "responses.stream.jsonl");
    for (std::string line; std::getline(file, line);) {
        const auto entry = parseJson(line).value_or(Json());
        const Json& message = *memberOf(entry, "message");
        byHand += ServerSentEvents::text({*readString(message, "type"), dumpJson(message)});
    }
    EXPECT_EQ(stream, byHand);

    const Events expected = {Started{"resp_1"}, LiveServerEvent(live_event::Thinking{"Settling the day"}),
        TextDelta{"One “moment”"}, TextDelta{"."}, Text{"One “moment”."},
        LiveServerEvent(live_event::Diagnostic{"tool_chosen", "set_reminder"}),
        call("call_1", "set_reminder", reminderText, false), LiveServerEvent(live_event::Usage{1234}),
        LiveServerEvent(live_event::Diagnostic{"backend_usage", "input 1200, cached 1000, output 34"}),
        LiveServerEvent(live_event::Diagnostic{"served_tier", "default"}), Ended{"resp_1", "completed"}};
    for (const std::size_t size : {1u, 2u, 3u, 7u, 64u, 100'000u})
        EXPECT_TRUE(readInPieces(stream, size) == expected) << size;
}

TEST(ResponsesWire, answersThatGoWrong)
{
    const char* created = R"({"type":"response.created","response":{"id":"r"}})";
    const char* added = R"({"type":"response.output_item.added","item":{"type":"function_call","id":"f","call_id":"c",
        "name":"type_text","arguments":""}})";
    const char* delta = R"({"type":"response.function_call_arguments.delta","item_id":"f","delta":"{\"a\":1}"})";
    const char* incomplete =
        R"({"type":"response.incomplete","response":{"id":"r","incomplete_details":{"reason":"max_output_tokens"}}})";
    const char* failed =
        R"({"type":"response.failed","response":{"id":"r","status":"failed","error":{"message":"Too busy."}}})";
    const char* doneBare = R"({"type":"response.output_item.done","item":{"type":"function_call","id":"f","call_id":"c",
        "name":"type_text","status":"completed"}})";
    const char* error = R"({"type":"error","code":"rate_limit","message":"Slow down."})";
    const ResponsesStreamEvent cutOff = call("c", "type_text", R"({"a":1})", true);
    const std::tuple<const char*, std::vector<const char*>, Events> rows[] = {
        {"a call that the limit cuts off", {added, delta, incomplete, created},
            {cutOff, Ended{"r", "incomplete", "max_output_tokens"}}},
        {"a failure says why", {created, failed, failed}, {Started{"r"}, Ended{"r", "failed", "Too busy."}}},
        {"arguments only in pieces", {added, delta, doneBare, failed},
            {call("c", "type_text", R"({"a":1})", false), Ended{"r", "failed", "Too busy."}}},
        {"an error ends the answer", {created, error, created},
            {Started{"r"}, LiveServerEvent(live_event::ServerError{"rate_limit", "Slow down."}),
                Ended{"r", "failed", "Slow down."}}},
        {"refused in words",
            {R"({"type":"response.refusal.delta","delta":"No."})",
                R"({"type":"response.refusal.done","refusal":"No."})"},
            {TextDelta{"No."}, Text{"No."}}},
        {"a bad byte", {"{\"type\":\"response.output_text.delta\",\"delta\":\"caf\xe9 \"}"}, {TextDelta{"caf\uFFFD "}}},
        {"nothing to go by",
            {"", "[DONE]", "{}", R"({"type":7})", R"({"type":"response.output_text.delta"})",
                R"({"type":"response.created"})", R"({"type":"response.in_progress"})"},
            {}},
    };
    for (const auto& [name, messages, read] : rows)
        EXPECT_TRUE(readAll(messages) == read) << name;

    ResponsesStreamWriter writer("r");
    const Events expected = {call("c", "type_text", "{\"a", true), Ended{"r", "incomplete", "max_output_tokens"}};
    std::string stream = writer.functionCall({"c", "type_text", "{\"a", true});
    stream += writer.ended({"", Status::incomplete, {}, {}, "max_output_tokens"});
    const Events read = readInPieces(stream, 9);
    EXPECT_TRUE(Events(read.begin() + 1, read.end()) == expected); // the first says that a tool was chosen
}

TEST(ServerSentEvents, readsEveryFormOfLines)
{
    const std::pair<const char*, std::vector<ServerSentEvent>> rows[] = {
        {"data: a\n\ndata:b\r\rdata:  c\r\ndata\r\n\r\n", {{"message", "a"}, {"message", "b"}, {"message", " c\n"}}},
        {"\xEF\xBB\xBF"
         "event: x\ndata: a\ndata\ndata: b\n\n",
            {{"x", "a\n\nb"}}},
        {": alive\nid: 7\nretry: 3\nevent: lost\n\ndata: a\n\n", {{"message", "a"}}},
        {"data: a\nevent: late\n\ndata: unfinished\n", {{"late", "a"}}},
        {"data:\n\n\n\n", {{"message", ""}}},
    };
    for (const auto& [stream, expected] : rows)
        for (const std::size_t size : {1u, 2u, 5u, 1000u}) {
            ServerSentEvents reader;
            std::vector<ServerSentEvent> events;
            for (std::string_view rest = stream; !rest.empty(); rest.remove_prefix(std::min(size, rest.size())))
                for (ServerSentEvent& event : reader.add(rest.substr(0, size)))
                    events.push_back(std::move(event));
            EXPECT_TRUE(events == expected) << stream << size;
        }
    ServerSentEvents reader;
    reader.add("data: " + std::string(ServerSentEvents::maximumEventBytes - 16, 'x') + "\n");
    EXPECT_FALSE(reader.isOverfull());
    reader.add("data: and more of it than fits");
    EXPECT_TRUE(reader.isOverfull());
    EXPECT_TRUE(reader.add("\n\ndata: a\n\n").empty());
}

} // namespace quorvell
