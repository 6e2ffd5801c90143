// SPDX-License-Identifier: MIT
// Catches a Gemini conversation that is opened, spoken or ended otherwise than the service expects.
#include "Quorvell/connections/gemini/LiveClient.h"

#include "ClientTalk.h"
#include "QuorvellCore/live/wire/gemini/GeminiClientParser.h"
#include "QuorvellCore/live/wire/gemini/GeminiServerMessage.h"
#include "ScriptedServices.h"

#include <gtest/gtest.h>

namespace quorvell {
namespace {

using namespace std::chrono_literals;
namespace said = gemini_client;
using Lateness = LiveMessageText::Lateness;
using GeminiTalk = ClientTalk<LiveClient>;

/// Answers the setup, and keeps what else was said.
struct GeminiService {
    GeminiService()
        : server([this](QWebSocket& from, const std::string& text) { hear(from, text); })
    {
    }
    void hear(QWebSocket& from, const std::string& text)
    {
        auto message = GeminiClientParser::parse(text);
        peer = &from;
        if (auto* setup = std::get_if<said::Setup>(&message)) {
            options = std::move(setup->options);
            // As real services do, in a binary frame.
            from.sendBinaryMessage(QByteArray::fromStdString(dumpJson(GeminiServerMessage::setupComplete("s"))));
        } else {
            heard.push_back(std::move(message));
        }
    }
    void tell(const Json& message) { tellerOf (*peer)(message); }
    template <typename Kind> std::vector<Kind> all() const
    {
        std::vector<Kind> found;
        for (const auto& message : heard)
            if (const auto* wanted = std::get_if<Kind>(&message))
                found.push_back(*wanted);
        return found;
    }

    QWebSocket* peer = nullptr;
    LiveSetupOptions options;
    std::vector<GeminiClientMessage> heard;
    ScriptedLiveServer server;
};

class LiveClientTest : public testing::Test {
protected:
    void SetUp() override { needQtApplication(); }
};

TEST_F(LiveClientTest, isSetUpWithWhatTheSessionWants)
{
    GeminiService service;
    GeminiTalk talk(service.server.access(), someSetup(), {});
    ASSERT_TRUE(talk.isStarted());
    EXPECT_EQ(service.server.keyHeader, "secret-key");
    EXPECT_EQ(service.options.systemInstruction, "Be kind.\n\nUse tools.");
    ASSERT_EQ(service.options.tools.size(), 1U);
    const Json& declarations = service.options.tools[0]["functionDeclarations"];
    ASSERT_EQ(declarations.size(), 1U) << "only what is offered and known";
    EXPECT_EQ(declarations[0]["parameters"]["type"], "OBJECT");
    ASSERT_TRUE(runUntil([&] { return !service.heard.empty(); }));
    EXPECT_EQ(
        service.all<said::Content>(), (std::vector<said::Content>{{{{"user", "hello"}, {"assistant", "hi"}}, false}}));

    // A handle stands in for the history.
    LiveSetup again = someSetup();
    again.resumptionHandle = "handle_7";
    GeminiService resumed;
    GeminiTalk second(resumed.server.access(), again, {});
    second.client.sendAudioPause();
    ASSERT_TRUE(runUntil([&] { return !resumed.heard.empty(); }));
    EXPECT_EQ(resumed.options.resumptionHandle, "handle_7");
    EXPECT_TRUE(resumed.all<said::Content>().empty());
}

TEST_F(LiveClientTest, givesSoundAtTheServicesRate)
{
    GeminiService service;
    GeminiTalk talk(service.server.access(), {}, {});
    for (int chunk = 0; chunk < 25; ++chunk)
        talk.client.sendAudio(Bytes(1920));
    talk.client.sendAudioPause();
    ASSERT_TRUE(runUntil([&] { return !service.all<said::AudioStreamEnd>().empty(); }));
    std::size_t bytes = 0;
    for (const said::Audio& sound : service.all<said::Audio>())
        bytes += sound.pcm.size();
    EXPECT_NEAR(static_cast<double>(bytes), 32000, 200) << "a second at 16000 Hz";
    service.tell(GeminiServerMessage::audio(Bytes{1, 2, 3, 4}));
    ASSERT_TRUE(talk.waitFor<live_event::Audio>());
}

TEST_F(LiveClientTest, interruptsNothingAndAnswersCallsOnce)
{
    GeminiService service;
    GeminiTalk talk(service.server.access(), {}, {});
    talk.client.sendMessage({.text = "note: milk"});
    ASSERT_TRUE(runUntil([&] { return service.heard.size() == 1; }));
    const std::vector<LiveFunctionCall> calls = {{"1", "keep_note"}, {"2", "look_up"}, {"3", "look_up"}};
    service.tell(GeminiServerMessage::toolCall(calls));
    service.tell(GeminiServerMessage::toolCall(calls));
    service.tell(GeminiServerMessage::toolCallCancellation({"2"}));
    ASSERT_TRUE(talk.waitFor<live_event::ToolCallCancellation>());
    EXPECT_EQ(talk.observer.all<live_event::ToolCall>().size(), 1U);

    talk.client.sendMessage({.text = "late", .lateness = Lateness::worthless});
    talk.client.sendMessage({.text = "by the way", .answer = LiveMessageText::Answer::notWanted});
    talk.client.sendToolResponse({"1", "keep_note", {{"status", "kept"}}}, LiveResponseScheduling::whenIdle);
    talk.client.sendToolResponse({"2", "look_up", {}}, LiveResponseScheduling::whenIdle);
    talk.client.sendToolResponse({"3", "look_up", {}}, LiveResponseScheduling::interrupt);
    talk.client.sendToolResponse({"3", "look_up", {}}, LiveResponseScheduling::interrupt);
    talk.client.dropStale();
    ASSERT_TRUE(runUntil([&] { return service.heard.size() == 3; }));
    EXPECT_TRUE(talk.observer.all<live_event::BackendIdle>().empty());

    service.tell(GeminiServerMessage::turnComplete());
    ASSERT_TRUE(talk.waitFor<live_event::BackendIdle>());
    ASSERT_TRUE(runUntil([&] { return service.heard.size() == 4; }));
    EXPECT_EQ(std::get<said::Content>(service.heard[0]), (said::Content{{{"user", "note: milk"}}, true}));
    const auto answers = service.all<said::ToolResponse>();
    ASSERT_EQ(answers.size(), 2U);
    EXPECT_EQ(answers[0].responses[0].response, (Json{{"status", "kept"}}));
    EXPECT_EQ(answers[1].responses[0].response, (Json{{"scheduling", "INTERRUPT"}}));
    EXPECT_EQ(std::get<said::Content>(service.heard[3]), (said::Content{{{"user", "by the way"}}, false}));

    // A service that never ends its turn does not keep messages waiting for ever.
    talk.client.sendMessage({.text = "one"});
    service.tell(GeminiServerMessage::outputTranscription("Well"));
    talk.client.sendMessage({.text = "two"});
    EXPECT_TRUE(runUntil([&] { return service.heard.size() == 6; }));
    talk.client.close();
    ASSERT_TRUE(runUntil([&] { return talk.observer.closings > 0; }));
    EXPECT_EQ(talk.observer.closure, LiveClosure{});
}

TEST_F(LiveClientTest, endsInOneSentence)
{
    GeminiService mute;
    GeminiTalk unanswered(mute.server.access(), {}, {});
    unanswered.client.sendMessage({.text = "hello"});
    ASSERT_TRUE(runUntil([&] { return unanswered.observer.closings > 0; }));
    EXPECT_NE(unanswered.observer.closure->sentence.find("gone silent"), std::string::npos);

    // Sound may have been a noise: one fresh connection is given it, and its silence is believed.
    ServiceExperience experience;
    for (const bool isGivenUp : {true, false}) {
        GeminiTalk unheard(mute.server.access(), {}, {});
        std::swap(unheard.experience, experience);
        unheard.client.sendAudio(Bytes(9600));
        unheard.client.sendAudioPause();
        EXPECT_EQ(runUntil([&] { return unheard.observer.closings > 0; }, isGivenUp ? std::chrono::seconds(5) : 600ms),
            isGivenUp);
        std::swap(unheard.experience, experience);
    }

    LiveSetup resuming;
    resuming.resumptionHandle = "stale";
    const ScriptedLiveServer server([](QWebSocket& peer, const std::string&) {
        peer.close(QWebSocketProtocol::CloseCodePolicyViolated, QStringLiteral("no such handle"));
    });
    GeminiTalk talk(server.access(), resuming, {});
    ASSERT_TRUE(runUntil([&] { return talk.observer.closings > 0; }));
    EXPECT_NE(talk.observer.closure->sentence.find("(no such handle)"), std::string::npos);

    const ScriptedWebServer refusing(ScriptedWebServer::always(ScriptedWebServer::answer("401 Unauthorized")));
    LiveAccess access = refusing.access();
    access.keyName = "GEMINI_API_KEY";
    GeminiTalk refused(access, {}, {});
    ASSERT_TRUE(runUntil([&] { return refused.observer.closings > 0; }));
    EXPECT_NE(refused.observer.closure->sentence.find("Check GEMINI_API_KEY"), std::string::npos);
}

} // namespace
} // namespace quorvell
