// SPDX-License-Identifier: MIT
// Catches messages of clients misread, or taken though they cannot be acted on.
#include "QuorvellCore/live/wire/openai/OpenAILiveClientParser.h"

#include "FixtureTable.h"
#include "Fixtures.h"
#include "QuorvellCore/live/wire/openai/OpenAISessionReader.h"

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
    const auto imagesOf = [&](const std::string& list) {
        return item(R"({"type":"message","role":"user","content":[)" + list + "]}");
    };
    auto rows = test::fixtureRows("live/openai.client.mistakes.txt", 2);
    rows.push_back({"nothing", {"", "invalid_json"}});
    rows.push_back({"too deep", {std::string(100, '['), "invalid_json"}});
    rows.push_back({"a picture", {imagesOf(image), "read"}});
    rows.push_back({"too many pictures", {imagesOf(images), "invalid_value"}});
    for (const auto& [name, lines] : rows)
        EXPECT_EQ(codeOf(OpenAILiveClientParser::parse(lines[0])), lines[1]) << name << lines[0];
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
