// SPDX-License-Identifier: MIT
// The messages written by hand hold both sides to the same protocol: one side builds each, the other reads it.
#include "Fixtures.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveClientParser.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveMessage.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveParser.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveServerMessage.h"
#include "QuorvellCore/live/wire/openai/OpenAIResponseEvent.h"

#include <gtest/gtest.h>

#include <tuple>

namespace quorvell {

namespace {

using Message = OpenAILiveMessage;
using Server = OpenAILiveServerMessage;
using Response = OpenAIResponseEvent;

const Bytes sound = {0x00, 0x00, 0xff, 0x7f, 0xff, 0x80};

OpenAILiveSetupOptions wholeOptions()
{
    OpenAILiveSetupOptions options;
    options.model = "voice-model";
    options.voice = "marin";
    options.instructions = "Speak “kindly”.";
    options.backendModel = "backend-model";
    options.backendInstructions = "Use the tools.";
    options.tools =
        parseJson(R"([{"type": "function", "name": "keep_note", "description": "Keeps a note.", "parameters":
        {"type": "object", "properties": {"title": {"type": "string"}}, "required": ["title"]}}])")
            .value_or(Json());
    options.reasoningEffort = "low";
    options.reasoningSummary = "auto";
    options.serviceTier = "priority";
    options.verbosity = "low";
    options.maxOutputTokens = 4096;
    options.history = {{"user", "What's on today?"}, {"assistant", "Lunch with Mina at one."}};
    return options;
}

OpenAILiveSetupOptions smallestOptions()
{
    OpenAILiveSetupOptions options;
    options.model = "voice-model";
    options.voice = "cedar";
    options.backendModel = "backend-model";
    return options;
}

Json asReceived(Json event)
{
    return Server::responseEvent(std::move(event));
}

} // namespace

TEST(OpenAIWireFixtures, clientMessagesAreBuiltAndRead)
{
    using namespace openai_client;
    using Kind = Append::Kind;
    const LiveImage picture{{0xff, 0xd8, 0xff, 0xe0}, "high"};
    const std::tuple<std::string, Json, OpenAILiveClientMessage> rows[] = {
        {"session.start", Message::sessionStart(wholeOptions(), Message::AudioFormat::declared),
            SessionStart{wholeOptions(), "start"}},
        {"session.start.smallest", Message::sessionStart(smallestOptions(), Message::AudioFormat::undeclared),
            SessionStart{smallestOptions(), "start"}},
        {"session.input_audio.append", Message::audio(sound), InputAudio{sound}},
        {"session.instructions.append",
            Message::instructions("Asha has just called Quorvell over.", {std::nullopt, "greeting"}),
            Append{Kind::instructions, "Asha has just called Quorvell over.", {std::nullopt, "greeting"}}},
        {"session.commentary.append", Message::commentary("Looking at the calendar.", {"del_1", std::nullopt}),
            Append{Kind::commentary, "Looking at the calendar.", {"del_1", std::nullopt}}},
        {"session.thinking.append", Message::thinking("Two events clash.", {"del_1", "thought_1"}),
            Append{Kind::thinking, "Two events clash.", {"del_1", "thought_1"}}},
        {"response.item.create.message",
            Message::backendMessage(
                "[They typed] remind me tomorrow at 5 pm to call the dentist", std::nullopt, "typed_1"),
            UserMessage{"[They typed] remind me tomorrow at 5 pm to call the dentist", {}, "typed_1"}},
        {"response.item.create.output", Message::functionOutput("call_1", R"({"status":"kept"})").front(),
            FunctionOutput{"call_1", R"({"status":"kept"})", std::nullopt}},
        {"response.item.create.image", Message::functionOutput("call_1", "{}", picture, "The screen now.").back(),
            UserMessage{"The screen now.", {picture}, std::nullopt}},
        {"response.create", Message::responseCreate("create_1"), ResponseCreate{"create_1"}},
        {"session.close", Message::close(), Close{"close"}},
    };
    std::set<std::string> unread = fixtureNames("client");
    for (const auto& [fixture, built, read] : rows) {
        SCOPED_TRACE(fixture);
        const std::string text = fixtureText("client", fixture);
        EXPECT_EQ(dumpJson(built), compact(text));
        EXPECT_TRUE(OpenAILiveClientParser::parse(text) == read);
        unread.erase(fixture);
    }
    EXPECT_TRUE(unread.empty()) << "no row for " << *unread.begin();
}

TEST(OpenAIWireFixtures, serverMessagesAreBuiltAndRead)
{
    using namespace openai_event;
    using Status = OpenAIResponseEnd::Status;
    const FunctionCall reminder{"call_1", "set_reminder", R"({"text":"tomorrow at 5 pm call the dentist"})", false};
    const FunctionCall cutOff{"call_2", "type_text", R"({"text":"Dear Mi)", true};
    const BackendUsage usage{1200, 1000, 34};
    const std::string refusal = "A response is still running. Wait for its end.";
    const std::tuple<std::string, std::optional<Json>, std::vector<OpenAILiveEvent>> rows[] = {
        {"session.started", Server::sessionStarted("sess_1"), {Started{"sess_1"}}},
        {"session.output_audio.delta", Server::outputAudioDelta(sound), {Audio{sound}}},
        {"session.input_transcript.delta", Server::inputTranscriptDelta("remind me "), {InputTranscript{"remind me "}}},
        {"session.output_transcript.delta", Server::outputTranscriptDelta("Done: “tomorrow” at 5 PM."),
            {OutputTranscript{"Done: “tomorrow” at 5 PM."}}},
        {"session.delegation.created", Server::delegationCreated("del_1"), {Delegated{"del_1"}}},
        {"response.created", asReceived(Response::created("resp_1")), {BackendStarted{"resp_1"}}},
        {"response.output_item.added", asReceived(Response::functionCallAdded(reminder)), {ToolChosen{"set_reminder"}}},
        {"response.output_item.done", asReceived(Response::functionCallDone(reminder)), {reminder}},
        {"response.output_item.done.incomplete", asReceived(Response::functionCallDone(cutOff)), {cutOff}},
        {"response.reasoning_summary_text.delta", asReceived(Response::reasoningDelta("Settling the day")),
            {Reasoning{"Settling the day"}}},
        {"response.reasoning_summary_part.added", asReceived(Response::reasoningBreak()), {Reasoning{}}},
        {"response.output_text.done", asReceived(Response::textDone("Sunday 22 November at 5 PM.")),
            {BackendText{"Sunday 22 November at 5 PM."}}},
        {"response.completed", asReceived(Response::ended({"resp_1", Status::completed, usage, "default"})),
            {BackendEnded{"resp_1", "completed"}, usage, ServedTier{"default"}}},
        {"response.failed", asReceived(Response::ended({"resp_1", Status::failed, {}, {}})),
            {BackendEnded{"resp_1", "failed"}}},
        {"response.incomplete", asReceived(Response::ended({"resp_1", Status::incomplete, {}, {}})),
            {BackendEnded{"resp_1", "incomplete"}}},
        {"response.cancelled", asReceived(Response::ended({"resp_1", Status::cancelled, {}, {}})),
            {BackendEnded{"resp_1", "cancelled"}}},
        {"session.usage.updated", Server::usageUpdated(12.5, 0.25), {Usage{12.5, 0.25}}},
        {"error", Server::error({"invalid_request_error", "response_in_progress", refusal, "create_2"}),
            {Error{"response_in_progress", refusal, "create_2"}}},
        {"session.closed", Server::sessionClosed("client_requested"), {Closed{"client_requested"}}},
        {"other.response.done", std::nullopt, {BackendEnded{"resp_1", "completed"}}},
        {"other.error", std::nullopt, {Error{std::nullopt, "Try again.", "create_3"}}},
        {"other.audio", std::nullopt, {Audio{sound}}},
    };
    std::set<std::string> unread = fixtureNames("server");
    for (const auto& [fixture, built, read] : rows) {
        SCOPED_TRACE(fixture);
        const std::string text = fixtureText("server", fixture);
        if (built) {
            EXPECT_EQ(dumpJson(*built), compact(text));
        }
        EXPECT_TRUE(OpenAILiveParser::parse(text) == read);
        unread.erase(fixture);
    }
    EXPECT_TRUE(unread.empty()) << "no row for " << *unread.begin();
}

TEST(OpenAIWireFixtures, usageHoldsOnlyWhatIsKnown)
{
    EXPECT_EQ(
        dumpJson(Server::usageUpdated(3, std::nullopt)), R"({"type":"session.usage.updated","usage":{"seconds":3.0}})");
    EXPECT_EQ(dumpJson(Server::usageUpdated(std::nullopt, 0.5)),
        R"({"type":"session.usage.updated","context_window":{"usage_ratio":0.5}})");
}

TEST(OpenAIWireFixtures, audioTextsAreThoseOfTheJSON)
{
    for (const std::size_t size : {0u, 1u, 2u, 3u, 4u, 1920u}) {
        SCOPED_TRACE(size);
        Bytes pcm(size);
        for (std::size_t index = 0; index < size; ++index)
            pcm[index] = static_cast<std::uint8_t>(index * 37);
        EXPECT_EQ(Message::audioText(pcm), dumpJson(Message::audio(pcm)));
        EXPECT_EQ(Server::outputAudioDeltaText(pcm), dumpJson(Server::outputAudioDelta(pcm)));
        EXPECT_TRUE(OpenAILiveParser::parse(Server::outputAudioDeltaText(pcm))
            == std::vector<OpenAILiveEvent>{openai_event::Audio{pcm}});
    }
}

} // namespace quorvell
