// SPDX-License-Identifier: MIT
// The messages written by hand hold both sides to the same protocol: one side builds each, the other reads it.
#include "FixtureTable.h"
#include "Fixtures.h"
#include "QuorvellCore/live/wire/gemini/GeminiClientParser.h"
#include "QuorvellCore/live/wire/gemini/GeminiLiveEndpoint.h"
#include "QuorvellCore/live/wire/gemini/GeminiServerMessage.h"
#include "QuorvellCore/live/wire/gemini/LiveMessage.h"
#include "QuorvellCore/live/wire/gemini/LiveServerParser.h"

#include <tuple>

namespace quorvell {

namespace {

using Message = LiveMessage;
using Server = GeminiServerMessage;

const Bytes sound = {0x00, 0x00, 0xff, 0x7f, 0xff, 0x80};

LiveSetupOptions wholeOptions()
{
    const char* tools = R"([{"functionDeclarations": [{"name": "clear_pointer",
        "description": "Takes the highlight off the screen."}]}])";
    return {"voice-model", "Puck", "Speak “kindly”.", parseJson(tools).value_or(Json()), 800, "handle_1", "low"};
}

LiveFunctionCall cutOffCall(const char* id, const char* name)
{
    return LiveFunctionCall::fromArgumentsText(id, name, "", true);
}

} // namespace

TEST(GeminiWire, clientMessagesAreBuiltAndRead)
{
    using namespace gemini_client;
    const LiveSetupOptions smallest{"voice-model", "Kore", "Be brief.", Json::array(), 500, {}, {}};
    const std::vector<LiveHistoryEntry> turns = {
        {"user", "What's on today?"}, {"assistant", "Lunch with Mina at one."}};
    const std::vector<LiveFunctionResponse> responses = {
        {"call_1", "keep_note", {{"status", "kept"}}}, {"call_2", "look_up", {{"error", "There is no network."}}}};
    const std::tuple<std::string, Json, GeminiClientMessage> rows[] = {
        {"setup.smallest", Message::setup(smallest), gemini_client::Setup{smallest}},
        {"setup.whole", Message::setup(wholeOptions()), gemini_client::Setup{wholeOptions()}},
        {"audio", Message::audio(sound), Audio{sound, 16000}},
        {"image", Message::image(Bytes{0xff, 0xd8, 0xff, 0xe0}), Image{{0xff, 0xd8, 0xff, 0xe0}}},
        {"audioStreamEnd", Message::audioStreamEnd(), AudioStreamEnd{}},
        {"text", Message::text("[They typed] what's on today?"),
            Content{{{"user", "[They typed] what's on today?"}}, true}},
        {"history", Message::history(turns).value_or(Json()), Content{turns, false}},
        {"toolResponse", Message::toolResponse(responses), ToolResponse{responses}},
    };
    auto unread = fixtureLines("gemini.client");
    for (const auto& [fixture, built, read] : rows) {
        SCOPED_TRACE(fixture);
        const std::string text = unread.extract(fixture).mapped();
        EXPECT_EQ(dumpJson(built), text);
        EXPECT_TRUE(GeminiClientParser::parse(text) == read);
    }
    EXPECT_TRUE(unread.empty()) << "no row for " << unread.begin()->first;
    EXPECT_FALSE(Message::history({{"user", " \n"}}));
}

TEST(GeminiWire, serverMessagesAreBuiltAndRead)
{
    using namespace live_event;
    const std::vector<LiveFunctionCall> calls = {
        {"call_1", "set_reminder", {{"text", "tomorrow at 5 pm call the dentist"}}}, {"call_2", "clear_pointer"}};
    const std::tuple<std::string, std::optional<Json>, std::vector<LiveServerEvent>> rows[] = {
        {"setupComplete", Server::setupComplete(), {SetupComplete{}}},
        {"setupComplete.named", Server::setupComplete("session_1"), {SetupComplete{"session_1"}}},
        {"audio", Server::audio(sound), {Audio{sound}}},
        {"inputTranscription", Server::inputTranscription("remind me "), {InputTranscript{"remind me "}}},
        {"outputTranscription", Server::outputTranscription("Done: “tomorrow” at 5 PM."),
            {OutputTranscript{"Done: “tomorrow” at 5 PM."}}},
        {"interrupted", Server::interrupted(), {Interrupted{}}},
        {"generationComplete", Server::generationComplete(), {GenerationComplete{}}},
        {"turnComplete", Server::turnComplete(), {TurnComplete{}}},
        {"toolCall", Server::toolCall(calls), {ToolCall{calls}}},
        {"toolCallCancellation", Server::toolCallCancellation({"call_1", "call_2"}),
            {ToolCallCancellation{{"call_1", "call_2"}}}},
        {"goAway", Server::goAway(std::chrono::milliseconds(9500)), {GoAway{std::chrono::milliseconds(9500)}}},
        {"resumption", Server::resumptionUpdate("handle_2"), {ResumptionHandle{"handle_2"}}},
        {"resumption.not", Server::resumptionUpdate(""), {}},
        {"usage", Server::usage(1234), {Usage{1234}}},
        {"other.everything", std::nullopt,
            {SetupComplete{}, InputTranscript{"a"}, Audio{{0, 0}}, Audio{{1, 0}}, OutputTranscript{"b"}, Interrupted{},
                GenerationComplete{}, TurnComplete{}, ToolCall{{{"call_3", "list_tabs"}}},
                ToolCallCancellation{{"call_0"}}, GoAway{std::chrono::seconds(10)}, ResumptionHandle{"h"}, Usage{7}}},
        {"other.odd", std::nullopt, {ToolCall{{cutOffCall("call_5", "type_text"), {"call_6", "scroll"}}}, GoAway{}}},
    };
    auto unread = fixtureLines("gemini.server");
    for (const auto& [fixture, built, read] : rows) {
        SCOPED_TRACE(fixture);
        const std::string text = unread.extract(fixture).mapped();
        if (built) {
            EXPECT_EQ(dumpJson(*built), text);
        }
        EXPECT_TRUE(LiveServerParser::parse(text) == read);
    }
    EXPECT_TRUE(unread.empty()) << "no row for " << unread.begin()->first;
}

TEST(GeminiWire, theShortWayForSoundAgreesWithTheLongOne)
{
    Bytes pcm(1280);
    for (std::size_t index = 0; index < pcm.size(); ++index)
        pcm[index] = static_cast<std::uint8_t>(index * 37);
    EXPECT_EQ(Message::audioText(pcm), dumpJson(Message::audio(pcm)));
    EXPECT_EQ(Server::audioText(pcm), dumpJson(Server::audio(pcm)));

    const char* texts[] = {
        R"({"serverContent":{"modelTurn":{"parts":[{"inlineData":{"mimeType":"audio/pcm","data":"AAA="}}]}},"x":1})",
        R"( {"serverContent" : {"modelTurn":{"parts":[ {"inlineData":{"mimeType":"audio/pcm","data":"AAA="}} ]}}} )",
        R"({"serverContent":{"modelTurn":{"parts":[{"inlineData":{"mimeType":"image/png","data":"AAA="}}]}}})",
        R"({"serverContent":{"modelTurn":{"parts":[{"inlineData":{"mimeType":"audio/pcm","data":"A"}}]}}})",
        R"({"serverContent":{"modelTurn":{"parts":[{"inlineData":{"mimeType":"audio/pcm","data":"AAA="}}]}})",
    };
    const std::size_t found[] = {1, 1, 0, 0, 0};
    for (std::size_t index = 0; index < std::size(texts); ++index)
        EXPECT_EQ(LiveServerParser::parse(texts[index]).size(), found[index]) << texts[index];
}

TEST(GeminiWire, whatNoServerCanActOnIsNamed)
{
    auto rows = test::fixtureRows("live/gemini.client.mistakes.txt", 2);
    rows.push_back({"nothing", {"", "no JSON object"}});
    for (const auto& [name, lines] : rows) {
        const auto message = GeminiClientParser::parse(lines[0]);
        const auto* problem = std::get_if<gemini_client::Malformed>(&message);
        ASSERT_TRUE(problem) << lines[0];
        EXPECT_NE(problem->reason.find(lines[1]), std::string::npos) << problem->reason;
    }
    for (const char* accepted : {R"({"setup":{"model":"models/m","generationConfig":7,"realtimeInputConfig":[]}})",
             R"({"realtimeInput":{"audio":{"data":"AAA=","mimeType":"audio/pcm"}}})"})
        EXPECT_FALSE(std::holds_alternative<gemini_client::Malformed>(GeminiClientParser::parse(accepted))) << accepted;
}

TEST(GeminiWire, keyTravelsInAHeader)
{
    const WebRequest request =
        GeminiLiveEndpoint::create("ws://127.0.0.1:8123").value_or(GeminiLiveEndpoint{}).request("secret");
    EXPECT_EQ(request.url,
        "ws://127.0.0.1:8123/ws/google.ai.generativelanguage.v1beta.GenerativeService.BidiGenerateContent");
    EXPECT_EQ(request.headers, (std::vector<std::pair<std::string, std::string>>{{"x-goog-api-key", "secret"}}));
    EXPECT_TRUE(GeminiLiveEndpoint{}.request("k").url.starts_with("wss://generativelanguage.googleapis.com/ws/"));
}

} // namespace quorvell
