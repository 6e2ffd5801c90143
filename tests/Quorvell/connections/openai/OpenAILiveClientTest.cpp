// SPDX-License-Identifier: MIT
// Catches connections that hang, leak a key, lose a message, or end without a sentence.
#include "Quorvell/connections/openai/OpenAILiveClient.h"

#include "QuorvellCore/live/wire/openai/OpenAILiveClientParser.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveServerMessage.h"
#include "QuorvellCore/live/wire/openai/OpenAIResponseEvent.h"
#include "ScriptedServices.h"

#include <gtest/gtest.h>

namespace quorvell {
namespace {

using namespace std::chrono_literals;
namespace said = openai_client;
using Way = OpenAIRoute::Way;
using Ways = std::vector<Way>;
using Wire = OpenAILiveServerMessage;

/// For what succeeds or is told, on a busy machine too.
constexpr LiveTimeLimits longLimits{.firstCreatePause = 5ms};
/// For what fails by waiting: only what is waited for is short, so that nothing else can come first.
constexpr LiveTimeLimits shortOpening{.toOpen = 300ms};
constexpr LiveTimeLimits shortStart{.toStart = 300ms};
constexpr LiveTimeLimits shortPings{.betweenPings = 50ms, .silence = 200ms};
constexpr LiveTimeLimits shortMedia{.toConnectMedia = 300ms, .firstCreatePause = 5ms};
constexpr LiveTimeLimits shortAnswers{.owedWord = 100ms, .toSayItIsThere = 800ms};

/// A client, and what it reported.
struct Talk {
    explicit Talk(const LiveAccess& access, Ways ways = {Way::socket}, LiveModelSettings models = {},
        const LiveTimeLimits& limits = longLimits)
        : source(access)
        , experience{.wasAsked = true}
        , client(source, std::move(models), observer, experience, limits,
              {std::move(ways), [this](Way way) { worked.push_back(way); },
                  [this](Way way) { blocked.push_back(way); }})
    {
        LiveSetup setup;
        setup.voiceInstructions = "Be kind.";
        client.open(setup);
    }
    bool isStarted() const { return !observer.all<live_event::SetupComplete>().empty(); }

    Ways worked;
    Ways blocked;
    RecordingLiveObserver observer;
    HostedAccess source;
    ServiceExperience experience;
    OpenAILiveClient client;
};

OpenAIResponseEnd completed(const std::string& id)
{
    OpenAIResponseEnd end;
    end.responseID = id;
    return end;
}

bool isStart(const std::string& text)
{
    return std::holds_alternative<said::SessionStart>(OpenAILiveClientParser::parse(text));
}

/// Begins a session and then does `then`.
ScriptedLiveServer::Script afterStart(std::function<void(QWebSocket&)> then)
{
    return [then = std::move(then)](QWebSocket& peer, const std::string& text) {
        if (!isStart(text))
            return;
        tellerOf(peer)(Wire::sessionStarted("sess_1"));
        then(peer);
    };
}

void beginsAtOnce(ScriptedPeerServer& session, const std::string&)
{
    session.teller()(Wire::sessionStarted("sess_1"));
}

/// How it ends, asked something as soon as it begins.
LiveClosure closureOf(const LiveAccess& access, Way way, const LiveTimeLimits& limits = longLimits)
{
    Talk talk(access, {way}, {}, limits);
    EXPECT_TRUE(runUntil([&] { return talk.observer.closings > 0 || talk.isStarted(); }, 20s));
    talk.client.sendMessage({.text = "hello"});
    EXPECT_TRUE(runUntil([&] { return talk.observer.closings > 0; }, 20s));
    EXPECT_EQ(talk.observer.closings, 1);
    return talk.observer.closure.value_or(LiveClosure{});
}

class OpenAILiveClientTest : public testing::Test {
protected:
    void SetUp() override { needQtApplication(); }
};

TEST_F(OpenAILiveClientTest, everyRefusalEndsInOneSentence)
{
    const auto http = [](const char* status, const char* body = "") { return ScriptedWebServer::answer(status, body); };
    const QByteArray busy = "HTTP/1.1 429 Too Many Requests\r\nContent-Length: 0\r\nRetry-After: ";
    const QByteArray upgrade = "HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
                               "Sec-WebSocket-Accept: {accept}\r\n\r\n";
    struct Row {
        const char* name;
        Way way;
        QByteArray answer;
        int code;
        bool mustUserAct;
        const char* sentence;
        std::optional<std::chrono::milliseconds> retryAfter{};
        LiveTimeLimits limits = longLimits;
    };
    const Row rows[] = {
        {"wrong key", Way::socket, http("401 Unauthorized"), 401, true,
            "did not accept the API key. Check OPENAI_API_KEY"},
        {"no right", Way::socket, http("403 Forbidden"), 403, true, "does not let this API key"},
        {"other server", Way::socket, http("404 Not Found"), 404, true, "offers no live conversations"},
        {"too many", Way::socket, http("429 Too Many Requests"), 429, false, "Wait a minute", 0ms},
        {"too many, for a while", Way::peer, busy + "150\r\n\r\n", 429, false, "Wait 3 minutes", 150s},
        {"the same, asked for a WebSocket", Way::socket, busy + "150\r\n\r\n", 429, false, "Wait 3 minutes", 150s},
        {"too many, until a date", Way::peer, busy + "Sun, 06 Nov 1994 08:49:37 GMT\r\n\r\n", 429, false, "Wait", 0ms},
        {"no credit", Way::peer,
            http("429 Too Many Requests", R"({"error":{"message":"No.","code":"insufficient_quota"}})"), 429, true,
            "credit is used up (No.)"},
        {"overloaded", Way::socket, http("503 Service Unavailable"), 503, false, "a problem of its own (503)", 0ms},
        {"no web server", Way::socket, "220 mail.example.org ready\r\n\r\n", 1006, false, "cannot be reached"},
        {"never answers", Way::socket, "", 1006, false, "did not answer in time", {}, shortOpening},
        {"never begins", Way::socket, upgrade, 1006, false, "The connection to the assistant has gone silent", {},
            shortPings},
        {"key out of money", Way::peer, http("401 Unauthorized", R"({"error":{"message":"No credit."}})"), 401, true,
            "did not accept the API key (No credit.)"},
        {"the same, asked for a WebSocket", Way::socket,
            http("401 Unauthorized", R"({"error":{"message":"No credit."}})"), 401, true,
            "did not accept the API key (No credit.)"},
        {"no such model", Way::peer, http("400 Bad Request", R"({"error":{"message":"No such model."}})"), 400, true,
            "refused the request (400: No such model.). Check the host and the models"},
        {"an echo of the key and of what was typed", Way::peer,
            http("400 Bad Request", R"({"error":{"message":"Bad secret-key in: what I typed"}})"), 400, true,
            "refused the request (400: Bad (key) in: what I typed)"},
        {"the same, without words", Way::socket, http("400 Bad Request"), 400, true,
            "refused the request (400). Check"},
        {"overloaded, asked by POST", Way::peer, http("503 Service Unavailable"), 503, false, "(503)", 0ms},
        {"another answer", Way::peer, http("200 OK", "<html>"), 1006, true, "something that is no conversation"},
        {"an answer without sound", Way::peer, http("200 OK", R"({"session":{},"transport":{"sdp":"v=0"}})"), 1006,
            false, "on this computer"},
        {"another address", Way::peer, "HTTP/1.1 307 See\r\nLocation: http://127.0.0.1:1/\r\nContent-Length: 0\r\n\r\n",
            307, false, "(307)"},
        {"never answers the POST", Way::peer, "", 1006, false, "did not answer in time", {}, shortOpening},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const ScriptedWebServer server(ScriptedWebServer::always(row.answer));
        const LiveClosure closure = closureOf(server.access(), row.way, row.limits);
        EXPECT_EQ(closure.code, row.code);
        EXPECT_EQ(closure.mustUserAct, row.mustUserAct);
        EXPECT_EQ(closure.retryAfter, row.retryAfter);
        EXPECT_NE(closure.sentence.find(row.sentence), std::string::npos) << closure.sentence;
        EXPECT_EQ(closure.sentence.find("secret-key"), std::string::npos);
        EXPECT_EQ(closure.reason.find_first_of("(.:"), std::string::npos) << "for the log: " << closure.reason;
        EXPECT_EQ(closure.reason.find("typed"), std::string::npos) << closure.reason;
    }
}

TEST_F(OpenAILiveClientTest, aServiceThatBreaksOffIsNoticed)
{
    const auto refuse = [](QWebSocket& peer, const std::string&) {
        tellerOf(peer)(Wire::error({"invalid_request_error", "model_not_found", "No such model.", "start"}));
    };
    const auto closing = [](int code) {
        return afterStart([code](QWebSocket& peer) { peer.close(static_cast<QWebSocketProtocol::CloseCode>(code)); });
    };
    struct Row {
        const char* name;
        ScriptedLiveServer::Script script;
        int code;
        const char* sentence;
        LiveTimeLimits limits = longLimits;
    };
    const Row rows[] = {
        {"begins nothing", [](QWebSocket&, const std::string&) {}, 1006, "did not begin the conversation in time",
            shortStart},
        {"refuses the session", refuse, 1006, "would not begin a conversation (No such model.). Check"},
        {"falls silent, and answers pings", afterStart([](QWebSocket&) {}), 1006, "has gone silent", shortAnswers},
        {"vanishes", afterStart([](QWebSocket& peer) { peer.abort(); }), 1006, "connection to the assistant was lost"},
        {"goes away", closing(1001), 1001, "went away"},
        {"does not understand", closing(1007), 1007, "did not understand a message"},
        {"does not allow", closing(1008), 1008, "does not allow this conversation"},
        {"fails", closing(1011), 1011, "had a problem of its own"},
        {"ends it", afterStart([](QWebSocket& peer) { tellerOf(peer)(Wire::sessionClosed("max_duration")); }), 1000,
            "ended the conversation (max_duration)"},
        {"floods", afterStart([](QWebSocket& peer) { peer.sendTextMessage(QString(17 * 1024 * 1024, u'x')); }), 1009,
            "more than fits"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const ScriptedLiveServer server(row.script);
        const LiveClosure closure = closureOf(server.access(), Way::socket, row.limits);
        EXPECT_EQ(closure.code, row.code) << closure.reason;
        EXPECT_NE(closure.sentence.find(row.sentence), std::string::npos) << closure.sentence;
    }
}

TEST_F(OpenAILiveClientTest, nothingIsSentToWhoeverCannotProveItself)
{
    for (const Way way : {Way::socket, Way::peer}) {
        const ScriptedLiveServer server([](QWebSocket&, const std::string&) {}, QWebSocketServer::SecureMode);
        const LiveClosure closure = closureOf(server.access(OpenAILiveEndpoint::Security::tls), way);
        EXPECT_TRUE(closure.mustUserAct);
        EXPECT_NE(closure.sentence.find("could not prove that it is what it claims to be"), std::string::npos)
            << closure.sentence;
        EXPECT_EQ(server.connections, 0);

        const std::string nobody = closureOf(accessTo(1), way).sentence;
        EXPECT_NE(nobody.find("cannot be reached"), std::string::npos) << nobody;
    }
}

/// A backend that calls one tool and then says what it was told, with all the noise of a careless service.
class CarelessService {
public:
    void hear(const Teller& tell, const std::string& text)
    {
        if (text.empty() || isStart(text)) // A call begins with its channel.
            return tell(Wire::sessionStarted("sess_1"));
        const auto message = OpenAILiveClientParser::parse(text);
        received.push_back(text);
        if (std::holds_alternative<said::ResponseCreate>(message))
            respond(tell);
        else if (const auto* output = std::get_if<said::FunctionOutput>(&message))
            m_output = output->output;
        else if (std::holds_alternative<said::Close>(message))
            tell(Wire::sessionClosed("client_requested"));
    }

    std::vector<std::string> received;

private:
    void respond(const Teller& tell)
    {
        const auto event = [&](Json inner) { tell(Wire::responseEvent(std::move(inner))); };
        const std::string id = "resp_" + std::to_string(++m_responses);
        event(OpenAIResponseEvent::created(id));
        tell(Json("no object"));
        tell({{"type", "session.unheard_of"}});
        if (m_responses == 1) {
            for (int times = 0; times < 2; ++times)
                event(OpenAIResponseEvent::functionCallDone({"call_1", "keep_note", R"({"title":"Milk"})"}));
        } else {
            event(OpenAIResponseEvent::textDone("Done: " + m_output));
        }
        for (int times = 0; times < 2; ++times)
            event(OpenAIResponseEvent::ended(completed(id)));
    }

    int m_responses = 0;
    std::string m_output;
};

void holdTypedConversation(Talk& talk, const CarelessService& service)
{
    ASSERT_TRUE(runUntil([&] { return talk.isStarted(); }));
    talk.client.sendMessage({.text = "note: milk"});
    ASSERT_TRUE(runUntil([&] { return !talk.observer.all<live_event::ToolCall>().empty(); }));
    talk.client.sendToolResponse({"call_1", "keep_note", {{"status", "kept"}}}, LiveResponseScheduling::whenIdle);
    ASSERT_TRUE(runUntil([&] { return !talk.observer.all<live_event::BackendIdle>().empty(); }));

    EXPECT_EQ(talk.observer.written, (std::vector<std::string>{R"(Done: {"status":"kept"})"}));
    const auto calls = talk.observer.all<live_event::ToolCall>();
    ASSERT_EQ(calls.size(), 1U);
    EXPECT_EQ(calls[0].calls[0], (LiveFunctionCall{"call_1", "keep_note", {{"title", "Milk"}}}));
    EXPECT_EQ(talk.observer.all<live_event::BackendIdle>().size(), 1U);
    ASSERT_EQ(service.received.size(), 4U);
    EXPECT_NE(service.received[0].find("note: milk"), std::string::npos);
    EXPECT_EQ(service.received[1], R"({"type":"response.create","event_id":"create_1"})");
    EXPECT_EQ(service.received[3], R"({"type":"response.create","event_id":"create_2"})");

    talk.client.close();
    ASSERT_TRUE(runUntil([&] { return talk.observer.closings > 0; }));
    EXPECT_EQ(talk.observer.closure, (LiveClosure{1000, "client_requested", false, ""}));
}

TEST_F(OpenAILiveClientTest, aTypedMessageRunsAToolAndComesBackInWriting)
{
    CarelessService bySocket;
    const ScriptedLiveServer server(
        [&](QWebSocket& peer, const std::string& text) { bySocket.hear(tellerOf(peer), text); });
    Talk overSocket(server.access());
    holdTypedConversation(overSocket, bySocket);
    EXPECT_EQ(server.keyHeader, "Bearer secret-key");

    CarelessService byPeer;
    const ScriptedPeerServer peers(
        [&](ScriptedPeerServer& session, const std::string& text) { byPeer.hear(session.teller(), text); });
    Talk overPeer(peers.access(), {Way::peer});
    holdTypedConversation(overPeer, byPeer);
    EXPECT_NE(peers.sessions.at(0).find("Be kind."), std::string::npos);
}

TEST_F(OpenAILiveClientTest, aServiceThatPingsAndNeverReadsIsLetGo)
{
    // 125 bytes each; what it sends is taken as fast as it comes, and every answer is as long.
    QByteArray pings;
    for (int count = 0; count < 8'000; ++count)
        pings += QByteArray("\x89\x7D", 2) + QByteArray(125, 'p');
    qint64 sent = 0;
    const ScriptedWebServer server([&](QTcpSocket& peer, const std::string& request) {
        peer.write(ScriptedWebServer::upgradeSaying(
            QByteArray::fromStdString(request), R"({"type":"session.started","session":{"id":"s"}})"));
        peer.setReadBufferSize(1);
        const auto more = [&] {
            while (peer.bytesToWrite() < 4 * 1024 * 1024 && sent < 512 * 1024 * 1024)
                sent += peer.write(pings);
        };
        QObject::connect(&peer, &QTcpSocket::bytesWritten, &peer, more);
        more();
    });
    Talk talk(server.access());
    ASSERT_TRUE(runUntil([&] { return talk.observer.closings > 0; }, 30s)) << sent;
    EXPECT_LT(sent, 128 * 1024 * 1024) << "and not all that it has";
    EXPECT_NE(talk.observer.closure->sentence.find("has gone silent"), std::string::npos);
}

TEST_F(OpenAILiveClientTest, soundTravelsBothWays)
{
    const ScriptedLiveServer server([](QWebSocket& peer, const std::string& text) {
        const auto message = OpenAILiveClientParser::parse(text);
        if (isStart(text))
            tellerOf(peer)(Wire::sessionStarted("sess_1"));
        if (const auto* sound = std::get_if<said::InputAudio>(&message))
            tellerOf(peer)(Wire::outputAudioDelta(sound->pcm));
    });
    Talk talk(server.access());
    const Bytes pcm = {1, 2, 3, 4};
    talk.client.sendAudio(pcm); // Too early: dropped.
    ASSERT_TRUE(runUntil([&] { return talk.isStarted(); }));
    talk.client.sendAudio(pcm);
    ASSERT_TRUE(runUntil([&] { return !talk.observer.all<live_event::Audio>().empty(); }));
    EXPECT_EQ(talk.observer.all<live_event::Audio>(), (std::vector<live_event::Audio>{{pcm}}));
    EXPECT_EQ(server.received.size(), 2U);

    ScriptedPeerServer peers([](ScriptedPeerServer& session, const std::string&) {
        session.teller()(Wire::sessionStarted("sess_1"));
        session.peer->sendSound(Bytes(9600, 0x11)); // 200 ms of anything but silence
    });
    Talk call(peers.access(), {Way::peer});
    ASSERT_TRUE(runUntil([&] { return call.isStarted(); }));
    call.client.sendAudio(Bytes(9600, 0x11));
    EXPECT_TRUE(runUntil([&] { return !call.observer.all<live_event::Audio>().empty() && !peers.heard.empty(); }));

    // What does not fit into one message of the channel is sent smaller, and not at the cost of the channel.
    call.client.sendMessage({.text = "look", .jpeg = Bytes(300'000)});
    call.client.sendToolResponse({"call_1", "x", {}}, LiveResponseScheduling::whenIdle);
    EXPECT_EQ(call.observer.all<live_event::Diagnostic>().back().name, "picture_too_large");

    peers.peer.reset();
    ASSERT_TRUE(runUntil([&] { return call.observer.closings > 0; }));
    EXPECT_NE(call.observer.closure->sentence.find("was lost"), std::string::npos);
}

TEST_F(OpenAILiveClientTest, aTextThatIsTooLongForACallIsNotWaitedForInVain)
{
    const ScriptedPeerServer peers(beginsAtOnce);
    Talk call(peers.access(), {Way::peer});
    ASSERT_TRUE(runUntil([&] { return call.isStarted(); }));
    call.client.sendMessage({.text = std::string(WebRTCPeer::largestText, 'x')});
    ASSERT_TRUE(runUntil([&] { return call.observer.closings > 0; }));
    EXPECT_NE(call.observer.closure->sentence.find("has gone silent"), std::string::npos);
}

TEST_F(OpenAILiveClientTest, whereMediaDoesNotGetThroughTheSocketTakesOver)
{
    ScriptedPeerServer peers([](ScriptedPeerServer&, const std::string&) {});
    peers.hangsUp = true;
    Talk alone(peers.access(), {Way::peer}, {}, shortMedia);
    ASSERT_TRUE(runUntil([&] { return alone.observer.closings > 0; }));
    EXPECT_NE(alone.observer.closure->sentence.find("sound does not get through"), std::string::npos);
    EXPECT_EQ(alone.blocked, (Ways{Way::peer}));

    Talk both(peers.access(), {Way::peer, Way::socket}, {}, shortMedia);
    ASSERT_TRUE(runUntil([&] { return both.isStarted(); }));
    EXPECT_EQ(both.blocked, (Ways{Way::peer}));
    EXPECT_EQ(both.worked, (Ways{Way::socket}));
    EXPECT_EQ(both.observer.closings, 0);
    EXPECT_EQ(both.observer.all<live_event::Diagnostic>().at(0).name, "transport_changed");

    const ScriptedWebServer unknown(ScriptedWebServer::always(ScriptedWebServer::answer("404 Not Found")));
    Talk refused(unknown.access(), {Way::peer, Way::socket});
    ASSERT_TRUE(runUntil([&] { return refused.observer.closings > 0; }));
    EXPECT_EQ(unknown.requests, 2) << "a service without WebRTC is asked for a WebSocket";
    EXPECT_TRUE(refused.blocked.empty());
}

TEST_F(OpenAILiveClientTest, aRefusedCreateIsTriedAgainAndGivenUpInTheEnd)
{
    for (const int refusals : {1, 3, 1000}) {
        SCOPED_TRACE(refusals);
        int creates = 0;
        const ScriptedLiveServer server([&](QWebSocket& peer, const std::string& text) {
            const Teller tell = tellerOf(peer);
            const auto message = OpenAILiveClientParser::parse(text);
            if (isStart(text))
                tell(Wire::sessionStarted("sess_1"));
            const auto* create = std::get_if<said::ResponseCreate>(&message);
            if (create == nullptr)
                return;
            if (++creates <= refusals)
                return tell(Wire::error(
                    {"invalid_request_error", "response_in_progress", "A response is running.", create->eventID}));
            tell(Wire::responseEvent(OpenAIResponseEvent::created("resp_1")));
            tell(Wire::responseEvent(OpenAIResponseEvent::ended(completed("resp_1"))));
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

TEST_F(OpenAILiveClientTest, aServiceThatIsStuckIsToldFromOneThatTakesLong)
{
    enum class Owed { nothing, wordOnSound, restOfAnswer };
    struct Row {
        const char* name;
        Owed owed;
        int answers; ///< To so many questions whether it is there; the first comes at the start.
        bool isGivenUp;
    };
    const Row rows[] = {
        {"nothing is owed", Owed::nothing, 1, false},
        {"it heard a noise", Owed::wordOnSound, 1000, false},
        {"stuck after speech", Owed::wordOnSound, 1, true},
        {"it never says whether it is there, and heard a noise", Owed::wordOnSound, 0, false},
        {"it thinks", Owed::restOfAnswer, 1000, false},
        {"stuck within an answer", Owed::restOfAnswer, 1, true},
        {"it never says whether it is there, and thinks", Owed::restOfAnswer, 0, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        int questions = 0;
        const ScriptedLiveServer server([&](QWebSocket& peer, const std::string& text) {
            const Teller tell = tellerOf(peer);
            const auto message = OpenAILiveClientParser::parse(text);
            if (isStart(text))
                tell(Wire::sessionStarted("sess_1"));
            if (std::holds_alternative<said::ResponseCreate>(message))
                tell(Wire::responseEvent(OpenAIResponseEvent::created("resp_1")));
            const auto* broken = std::get_if<said::Malformed>(&message);
            if (broken && ++questions <= row.answers)
                tell(Wire::error({"invalid_request_error", broken->code, broken->reason,
                    questions % 2 == 0 ? broken->eventID : std::nullopt}));
        });
        Talk talk(server.access(), {Way::socket}, {}, shortAnswers);
        talk.experience.wasAsked = false;
        ASSERT_TRUE(runUntil([&] { return questions == 1; }));
        if (row.owed == Owed::wordOnSound) {
            talk.client.sendAudio(Bytes(1920));
            talk.client.sendAudioPause();
        } else if (row.owed == Owed::restOfAnswer) {
            talk.client.sendMessage({.text = "hello"});
        }
        EXPECT_EQ(runUntil([&] { return talk.observer.closings > 0; }, row.isGivenUp ? 10s : 1100ms), row.isGivenUp);
        EXPECT_EQ(questions > 1, row.owed != Owed::nothing);
        EXPECT_TRUE(talk.observer.all<live_event::ServerError>().empty());
    }
}

TEST_F(OpenAILiveClientTest, aRefusedSettingIsDroppedOnceAndTheSessionAskedForAgain)
{
    const ScriptedLiveServer server([](QWebSocket& peer, const std::string& text) {
        if (text.find("service_tier") != std::string::npos)
            return tellerOf(peer)(Wire::error(
                {"invalid_request_error", "unsupported_value", "service_tier priority is not available.", "start"}));
        tellerOf(peer)(Wire::sessionStarted("sess_1"));
    });
    ScriptedPeerServer peers(beginsAtOnce);
    peers.refusal = ScriptedWebServer::answer("403 Forbidden", R"({"error":{"message":"Unknown SERVICE_TIER"}})");
    LiveModelSettings models;
    models.options.serviceTier = "priority";
    Talk overSocket(server.access(), {Way::socket}, models);
    Talk overPeer(peers.access(), {Way::peer}, models);
    for (Talk* talk : {&overSocket, &overPeer}) {
        ASSERT_TRUE(runUntil([&] { return talk->isStarted(); }));
        const auto facts = talk->observer.all<live_event::Diagnostic>();
        ASSERT_EQ(facts.size(), 2U);
        EXPECT_EQ(facts[0], (live_event::Diagnostic{"responses_setting_dropped", "service_tier"}));
        EXPECT_EQ(facts[1].name, "session_request_retried");
    }
    EXPECT_EQ(server.connections, 2);
    EXPECT_EQ(overPeer.experience.refused, std::set{RefusedSetting::serviceTier});
    ASSERT_EQ(peers.sessions.size(), 2U);
    EXPECT_EQ(peers.sessions[1].find("service_tier"), std::string::npos);
}

} // namespace
} // namespace quorvell
