#include "Quorvell/connections/OpenAILiveClient.h"

#include "Quorvell/connections/HostedAccess.h"
#include "QuorvellCore/live/wire/OpenAILiveClientParser.h"
#include "QuorvellCore/live/wire/OpenAILiveServerMessage.h"
#include "QuorvellCore/live/wire/OpenAIResponseEvent.h"
#include "RecordingLiveObserver.h"
#include "ScriptedLiveServer.h"

#include <gtest/gtest.h>

namespace quorvell {
namespace {

using namespace std::chrono_literals;
namespace said = openai_client;

constexpr LiveTimeLimits shortLimits{300ms, 300ms, 300ms, 50ms, 200ms, 5ms};

/// A client, and what it reported.
struct Talk {
    explicit Talk(const LiveAccess& access, LiveModelSettings models = {})
        : source(access)
        , client(source, std::move(models), observer, shortLimits)
    {
        LiveSetup setup;
        setup.voiceInstructions = "Be kind.";
        client.open(setup);
    }
    bool isStarted() const { return !observer.all<live_event::SetupComplete>().empty(); }

    RecordingLiveObserver observer;
    HostedAccess source;
    OpenAILiveClient client;
};

void tell(QWebSocket& peer, const Json& message)
{
    peer.sendTextMessage(QString::fromStdString(dumpJson(message)));
}

OpenAIResponseEnd completed(const std::string& id)
{
    OpenAIResponseEnd end;
    end.responseID = id;
    return end;
}

/// Begins a session and then does `then`.
ScriptedLiveServer::Script afterStart(std::function<void(QWebSocket&)> then)
{
    return [then = std::move(then)](QWebSocket& peer, const std::string& text) {
        const auto message = OpenAILiveClientParser::parse(text);
        if (!std::holds_alternative<said::SessionStart>(message))
            return;
        tell(peer, OpenAILiveServerMessage::sessionStarted("sess_1"));
        then(peer);
    };
}

LiveClosure closureOf(const LiveAccess& access)
{
    Talk talk(access);
    EXPECT_TRUE(runUntil([&] { return talk.observer.closings > 0; }));
    EXPECT_EQ(talk.observer.closings, 1);
    return talk.observer.closure.value_or(LiveClosure{});
}

class OpenAILiveClientTest : public testing::Test {
protected:
    void SetUp() override { needQtApplication(); }
};

TEST_F(OpenAILiveClientTest, everyWayToFailEndsInOneSentence)
{
    const auto http = [](const char* status) {
        return QByteArray("HTTP/1.1 ") + status + "\r\nContent-Length: 0\r\nConnection: close\r\n\r\n";
    };
    const QByteArray upgrade = "HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
                               "Sec-WebSocket-Accept: {accept}\r\n\r\n";
    struct Row {
        const char* name;
        QByteArray answer;
        int code;
        bool mustUserAct;
        const char* sentence;
    };
    const Row rows[] = {
        {"wrong key", http("401 Unauthorized"), 401, true, "did not accept the API key. Check OPENAI_API_KEY"},
        {"no right", http("403 Forbidden"), 403, true, "does not let this API key"},
        {"other server", http("404 Not Found"), 404, true, "offers no live conversations"},
        {"too many", http("429 Too Many Requests"), 429, false, "Wait a minute"},
        {"overloaded", http("503 Service Unavailable"), 503, false, "a problem of its own (503)"},
        {"no web server", "220 mail.example.org ready\r\n\r\n", 1006, false, "cannot be reached"},
        {"never answers", "", 1006, false, "did not answer in time"},
        {"never begins", upgrade, 1006, false, "The connection to the assistant has gone silent"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const RawServer server(row.answer);
        const LiveClosure closure = closureOf(server.access());
        EXPECT_EQ(closure.code, row.code);
        EXPECT_EQ(closure.mustUserAct, row.mustUserAct);
        EXPECT_NE(closure.sentence.find(row.sentence), std::string::npos) << closure.sentence;
        EXPECT_EQ(closure.sentence.find("secret-key"), std::string::npos);
    }
}

TEST_F(OpenAILiveClientTest, aServiceThatBreaksOffIsNoticed)
{
    const auto refuse = [](QWebSocket& peer, const std::string&) {
        tell(peer,
            OpenAILiveServerMessage::error({"invalid_request_error", "model_not_found", "No such model.", "start"}));
    };
    struct Row {
        const char* name;
        ScriptedLiveServer::Script script;
        int code;
        const char* sentence;
    };
    const Row rows[] = {
        {"begins nothing", [](QWebSocket&, const std::string&) {}, 1006, "did not begin the conversation in time"},
        {"refuses the session", refuse, 1006, "would not begin a conversation: No such model."},
        {"vanishes", afterStart([](QWebSocket& peer) { peer.abort(); }), 1006, "connection to the assistant was lost"},
        {"fails", afterStart([](QWebSocket& peer) { peer.close(QWebSocketProtocol::CloseCodeBadOperation); }), 1011,
            "had a problem of its own"},
        {"ends it",
            afterStart([](QWebSocket& peer) { tell(peer, OpenAILiveServerMessage::sessionClosed("max_duration")); }),
            1000, "ended the conversation (max_duration)"},
        {"floods", afterStart([](QWebSocket& peer) { peer.sendTextMessage(QString(17 * 1024 * 1024, u'x')); }), 1009,
            "more than fits"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const ScriptedLiveServer server(row.script);
        const LiveClosure closure = closureOf(server.access());
        EXPECT_EQ(closure.code, row.code) << closure.reason;
        EXPECT_NE(closure.sentence.find(row.sentence), std::string::npos) << closure.sentence;
    }
}

TEST_F(OpenAILiveClientTest, aServerThatCannotProveItselfIsSentNothing)
{
    const ScriptedLiveServer server([](QWebSocket&, const std::string&) {}, QWebSocketServer::SecureMode);
    const LiveClosure closure = closureOf(server.access(OpenAILiveEndpoint::Security::tls));
    EXPECT_TRUE(closure.mustUserAct);
    EXPECT_NE(closure.sentence.find("could not prove that it is what it claims to be"), std::string::npos)
        << closure.sentence;
    EXPECT_EQ(server.connections, 0);
}

TEST_F(OpenAILiveClientTest, nobodyAnswersAtAClosedPort)
{
    LiveAccess access;
    {
        const RawServer server("");
        access = server.access();
    }
    const std::string sentence = closureOf(access).sentence;
    EXPECT_NE(sentence.find("cannot be reached"), std::string::npos) << sentence;
}

/// A backend that calls one tool and then says what it was told, with all the noise of a careless service.
class CarelessService {
public:
    void operator()(QWebSocket& peer, const std::string& text)
    {
        const auto message = OpenAILiveClientParser::parse(text);
        if (std::holds_alternative<said::SessionStart>(message)) {
            tell(peer, OpenAILiveServerMessage::sessionStarted("sess_1"));
        } else if (std::holds_alternative<said::ResponseCreate>(message)) {
            respond(peer);
        } else if (const auto* output = std::get_if<said::FunctionOutput>(&message)) {
            m_output = output->output;
        } else if (std::holds_alternative<said::Close>(message)) {
            tell(peer, OpenAILiveServerMessage::sessionClosed("client_requested"));
            peer.close();
        }
    }

private:
    static void event(QWebSocket& peer, Json event) { tell(peer, OpenAILiveServerMessage::responseEvent(event)); }

    void respond(QWebSocket& peer)
    {
        const std::string id = "resp_" + std::to_string(++m_responses);
        event(peer, OpenAIResponseEvent::created(id));
        peer.sendTextMessage(QStringLiteral("{\"type\":\"response.event\",\"event\":[}"));
        peer.sendTextMessage(QStringLiteral("{\"type\":\"session.unheard_of\"}"));
        peer.sendBinaryMessage("\x00\xFF");
        if (m_responses == 1) {
            for (int times = 0; times < 2; ++times)
                event(peer, OpenAIResponseEvent::functionCallDone({"call_1", "keep_note", R"({"title":"Milk"})"}));
        } else {
            event(peer, OpenAIResponseEvent::textDone("Done: " + m_output));
        }
        for (int times = 0; times < 2; ++times)
            event(peer, OpenAIResponseEvent::ended(completed(id)));
    }

    int m_responses = 0;
    std::string m_output;
};

TEST_F(OpenAILiveClientTest, aTypedMessageRunsAToolAndComesBackInWriting)
{
    CarelessService service;
    const ScriptedLiveServer server(std::ref(service));
    Talk talk(server.access());
    ASSERT_TRUE(runUntil([&] { return talk.isStarted(); }));
    EXPECT_EQ(server.authorization, "Bearer secret-key");

    talk.client.sendMessage({.text = "note: milk"});
    ASSERT_TRUE(runUntil([&] { return !talk.observer.all<live_event::ToolCall>().empty(); }));
    talk.client.sendToolResponse({"call_1", "keep_note", {{"status", "kept"}}}, LiveResponseScheduling::whenIdle);
    ASSERT_TRUE(runUntil([&] { return !talk.observer.all<live_event::BackendIdle>().empty(); }));

    EXPECT_EQ(talk.observer.written, (std::vector<std::string>{R"(Done: {"status":"kept"})"}));
    const auto calls = talk.observer.all<live_event::ToolCall>();
    ASSERT_EQ(calls.size(), 1U);
    EXPECT_EQ(calls[0].calls[0], (LiveFunctionCall{"call_1", "keep_note", {{"title", "Milk"}}}));
    EXPECT_EQ(talk.observer.all<live_event::BackendIdle>().size(), 1U);
    ASSERT_EQ(server.received.size(), 5U);
    EXPECT_NE(server.received[1].find("note: milk"), std::string::npos);
    EXPECT_EQ(server.received[2], R"({"type":"response.create","event_id":"create_1"})");
    EXPECT_EQ(server.received[4], R"({"type":"response.create","event_id":"create_2"})");

    talk.client.close();
    ASSERT_TRUE(runUntil([&] { return talk.observer.closings > 0; }));
    EXPECT_EQ(talk.observer.closure, (LiveClosure{1000, "client_requested", false, ""}));
}

TEST_F(OpenAILiveClientTest, soundTravelsBothWays)
{
    const ScriptedLiveServer server([](QWebSocket& peer, const std::string& text) {
        const auto message = OpenAILiveClientParser::parse(text);
        if (std::holds_alternative<said::SessionStart>(message))
            tell(peer, OpenAILiveServerMessage::sessionStarted("sess_1"));
        if (const auto* sound = std::get_if<said::InputAudio>(&message))
            tell(peer, OpenAILiveServerMessage::outputAudioDelta(sound->pcm));
    });
    Talk talk(server.access());
    const Bytes pcm = {1, 2, 3, 4};
    talk.client.sendAudio(pcm); // Too early: dropped.
    ASSERT_TRUE(runUntil([&] { return talk.isStarted(); }));
    talk.client.sendAudio(pcm);
    ASSERT_TRUE(runUntil([&] { return !talk.observer.all<live_event::Audio>().empty(); }));
    EXPECT_EQ(talk.observer.all<live_event::Audio>(), (std::vector<live_event::Audio>{{pcm}}));
    const auto start = OpenAILiveClientParser::parse(server.received[0]);
    EXPECT_EQ(std::get<said::SessionStart>(start).options.instructions, "Be kind.");
    EXPECT_EQ(std::get<said::SessionStart>(start).options.sampleRate, 24000);
    EXPECT_EQ(server.received.size(), 2U);
}

TEST_F(OpenAILiveClientTest, aRefusedCreateIsTriedAgainAndGivenUpInTheEnd)
{
    for (const int refusals : {1, 3, 1000}) {
        SCOPED_TRACE(refusals);
        int creates = 0;
        const ScriptedLiveServer server([&](QWebSocket& peer, const std::string& text) {
            const auto message = OpenAILiveClientParser::parse(text);
            if (std::holds_alternative<said::SessionStart>(message))
                tell(peer, OpenAILiveServerMessage::sessionStarted("sess_1"));
            const auto* create = std::get_if<said::ResponseCreate>(&message);
            if (create == nullptr)
                return;
            if (++creates <= refusals)
                return tell(peer,
                    OpenAILiveServerMessage::error(
                        {"invalid_request_error", "response_in_progress", "A response is running.", create->eventID}));
            tell(peer, OpenAILiveServerMessage::responseEvent(OpenAIResponseEvent::created("resp_1")));
            tell(peer, OpenAILiveServerMessage::responseEvent(OpenAIResponseEvent::ended(completed("resp_1"))));
        });
        Talk talk(server.access());
        ASSERT_TRUE(runUntil([&] { return talk.isStarted(); }));
        talk.client.sendMessage({.text = "hello"});
        ASSERT_TRUE(runUntil(
            [&] { return talk.observer.closings > 0 || !talk.observer.all<live_event::BackendIdle>().empty(); }, 20s));
        EXPECT_EQ(talk.observer.closings, refusals == 1000 ? 1 : 0);
        EXPECT_TRUE(talk.observer.all<live_event::ServerError>().empty());
        EXPECT_LE(creates, 7);
    }
}

TEST_F(OpenAILiveClientTest, aRefusedSettingIsDroppedOnceAndTheSessionAskedForAgain)
{
    const ScriptedLiveServer server([](QWebSocket& peer, const std::string& text) {
        if (text.find("service_tier") != std::string::npos)
            return tell(peer,
                OpenAILiveServerMessage::error({"invalid_request_error", "unsupported_value",
                    "service_tier priority is not available.", "start"}));
        tell(peer, OpenAILiveServerMessage::sessionStarted("sess_1"));
    });
    LiveModelSettings models;
    models.serviceTier = "priority";
    Talk talk(server.access(), models);
    ASSERT_TRUE(runUntil([&] { return talk.isStarted(); }));
    EXPECT_EQ(server.connections, 2);
    const auto facts = talk.observer.all<live_event::Diagnostic>();
    ASSERT_EQ(facts.size(), 2U);
    EXPECT_EQ(facts[0].name, "responses_setting_dropped");
    EXPECT_EQ(facts[1].name, "session_request_retried");
}

} // namespace
} // namespace quorvell
