// SPDX-License-Identifier: MIT
// Catches messages of clients misread, or taken though they cannot be acted on.
#include "QuorvellCore/live/wire/openai/OpenAILiveClientParser.h"

#include "Fixtures.h"
#include "QuorvellCore/live/wire/openai/OpenAISessionReader.h"

#include <gtest/gtest.h>

#include <tuple>

namespace quorvell {

namespace {

std::string codeOf(const OpenAILiveClientMessage& message)
{
    const auto* malformed = std::get_if<openai_client::Malformed>(&message);
    return malformed ? malformed->code : "read";
}

std::string item(const std::string& value)
{
    return R"({"type":"response.item.create","event_id":"e","item":)" + value + "}";
}

} // namespace

TEST(OpenAILiveClientParser, whatCannotBeActedOnIsNamed)
{
    const std::string image = R"({"type":"input_image","image_url":"data:image/jpeg;base64,AAAA"})";
    std::string images = image;
    for (int count = 1; count < 9; ++count)
        images += "," + image;
    const std::pair<std::string, std::string> rows[] = {
        {"", "invalid_json"},
        {"[]", "invalid_json"},
        {std::string(100, '['), "invalid_json"},
        {R"({})", "missing_field"},
        {R"({"type":null})", "missing_field"},
        {R"({"type":"session.stop"})", "unknown_type"},
        {R"({"type":"session.start"})", "missing_field"},
        {R"({"type":"session.start","session":[]})", "invalid_value"},
        {R"({"type":"session.input_audio.append"})", "missing_field"},
        {R"({"type":"session.input_audio.append","audio":"AA"})", "invalid_value"},
        {R"({"type":"session.input_audio.append","audio":"AAAA"})", "invalid_value"}, // three bytes: half a sample
        {R"({"type":"session.thinking.append","text":"x"})", "missing_field"},
        {R"({"type":"response.item.create"})", "missing_field"},
        {item(R"({"type":"file"})"), "invalid_value"},
        {item(R"({"type":"function_call_output","output":"{}"})"), "missing_field"},
        {item(R"({"type":"function_call_output","call_id":"c","output":{}})"), "missing_field"},
        {item(R"({"type":"message","role":"assistant","content":[]})"), "invalid_value"},
        {item(R"({"type":"message","role":"user","content":7})"), "invalid_value"},
        {item(R"({"type":"message","role":"user","content":[{"type":"input_audio"}]})"), "invalid_value"},
        {item(R"({"type":"message","role":"user","content":[{"type":"input_image","image_url":"https://x"}]})"),
            "invalid_value"},
        {item(R"({"type":"message","role":"user","content":[)" + image + "]}"), "read"},
        {item(R"({"type":"message","role":"user","content":[)" + images + "]}"), "invalid_value"},
    };
    for (const auto& [message, code] : rows)
        EXPECT_EQ(codeOf(OpenAILiveClientParser::parse(message)), code) << message;
}

TEST(OpenAILiveClientParser, refusesWhatASessionCannotBe)
{
    std::string tools = "[{}";
    for (std::size_t count = 1; count <= OpenAISessionReader::maximumTools; ++count)
        tools += ",{}";
    tools += "]";
    const std::tuple<const char*, const char*, const char*, const char*> rows[] = {
        {"too many tools", "/session/delegation/response/tools", tools.c_str(), "\"tools\""},
        {"no model", "/session/model", "7", "\"model\""},
        {"no voice", "/session/audio/output/voice", "null", "\"voice\""},
        {"rate too low", "/session/audio/format/rate", "7999", "\"format\""},
        {"rate too high", "/session/audio/format/rate", "48001", "\"format\""},
        {"another codec", "/session/audio/format/type", "\"audio/opus\"", "\"format\""},
        {"no delegation", "/session/delegation", "{}", "\"delegation\""},
        {"tools that are no objects", "/session/delegation/response/tools", "[1]", "\"tools\""},
        {"tools that are no list", "/session/delegation/response/tools", "{}", "\"tools\""},
        {"history of something else", "/session/input", "[{}]", "\"input\""},
    };
    for (const auto& [name, pointer, value, problem] : rows) {
        SCOPED_TRACE(name);
        Json message = parseJson(fixtureText("client", "session.start")).value_or(Json());
        message[Json::json_pointer(pointer)] = parseJson(value).value_or(Json());
        const auto read = OpenAILiveClientParser::parse(dumpJson(message));
        const auto* malformed = std::get_if<openai_client::Malformed>(&read);
        ASSERT_TRUE(malformed);
        EXPECT_NE(malformed->reason.find(problem), std::string::npos) << malformed->reason;
        EXPECT_EQ(malformed->eventID, "start");
    }
}

} // namespace quorvell
