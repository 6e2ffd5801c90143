#include "LiveService/server/LiveServer.h"

#include "LiveService/server/WebSocketTransport.h"
#include "Quorvell/webrtc/WebRTCPeer.h"
#include "QuorvellCore/live/wire/LiveEndpoint.h"
#include "QuorvellCore/live/wire/LiveMessage.h"
#include "QuorvellCore/live/wire/LiveServerParser.h"
#include "QuorvellCore/live/wire/OpenAILiveEndpoint.h"
#include "QuorvellCore/live/wire/OpenAILiveMessage.h"
#include "QuorvellCore/live/wire/ResponsesEndpoint.h"
#include "QuorvellCore/live/wire/ResponsesStreamParser.h"
#include "QuorvellCore/live/wire/ServerSentEvents.h"
#include "QuorvellCore/text/Base64.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSslKey>
#include <QTcpSocket>
#include <QWebSocket>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <atomic>
#include <cmath>

namespace quorvell {

namespace {

class EventLoop : public testing::Environment {
public:
    void SetUp() override
    {
        static int argumentCount = 0;
        static QCoreApplication application(argumentCount, nullptr);
    }
};
const auto* const eventLoop = testing::AddGlobalTestEnvironment(new EventLoop);

/// Hears "remind me ..." in every sound, and speaks 10 ms of sound for each letter.
class FakeSpeech : public SpeechPort {
public:
    void begin() override { m_heard = 0; }
    void feed(std::span<const std::int16_t> samples) override { m_heard += samples.size(); }
    HeardTurn finish() override { return {.text = m_heard > 8000 ? "remind me tomorrow at 5 pm to eat" : ""}; }
    void speak(std::string_view, std::string_view text, const Sink& sink, std::stop_token stop) override
    {
        const std::vector<std::int16_t> letter(160, 1000);
        for (std::size_t count = 0; count < text.size() && !stop.stop_requested(); ++count)
            sink(letter);
    }

private:
    std::size_t m_heard = 0;
};

bool waitFor(const std::function<bool()>& holds, int milliseconds = 5000)
{
    QElapsedTimer elapsed;
    elapsed.start();
    while (!holds()) {
        if (elapsed.elapsed() > milliseconds)
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 10);
    }
    return true;
}

LiveServer::Settings settings(const std::vector<const char*>& faultTexts = {})
{
    std::vector<Fault> faults;
    std::string problem;
    for (const char* text : faultTexts)
        faults.push_back(Fault::parse(text, problem).value());
    const std::chrono::sys_days day = std::chrono::year(2026) / 11 / 21;
    const auto count = std::make_shared<std::atomic<int>>(0);
    return {.token = "secret",
        .calendar = *Calendar::create("Europe/Berlin", "en_US"),
        .wallClock = [day] { return Instant(day); },
        .ids = [count](std::string_view prefix) { return std::string(prefix) + std::to_string(++*count); },
        .makeSpeech = [] { return std::make_unique<FakeSpeech>(); },
        .mostSessions = 2,
        .faults = std::move(faults)};
}

constexpr const char* isSet =
    R"({"status":"set","task":"Eat","date":"2026-11-22 17:00","when":"Sunday 22 November at 5 PM"})";

/// 40 ms at 24000 Hz.
Bytes loudChunk()
{
    Bytes chunk;
    for (int sample = 0; sample < 960; ++sample)
        chunk.insert(chunk.end(), {0, static_cast<std::uint8_t>(sample % 20 < 10 ? 30 : 226)});
    return chunk;
}

QNetworkRequest requestFor(const WebRequest& request)
{
    QNetworkRequest result(QUrl(QString::fromStdString(request.url)));
    for (const auto& [name, value] : request.headers)
        result.setRawHeader(QByteArray::fromStdString(name), QByteArray::fromStdString(value));
    return result;
}

std::string addressOf(const LiveServer& server)
{
    return "http://127.0.0.1:" + std::to_string(server.port());
}

/// A client that answers set_reminder and remembers what came.
class Client {
public:
    explicit Client(const LiveServer& server, const char* key = "secret")
    {
        QObject::connect(
            &socket, &QWebSocket::textMessageReceived, &socket, [this](const QString& text) { take(text); });
        QObject::connect(&socket, &QWebSocket::connected, &socket, [this] { isConnected = true; });
        QObject::connect(&socket, &QWebSocket::disconnected, &socket, [this] { isOver = true; });
        QNetworkRequest request(QUrl(QStringLiteral("ws://127.0.0.1:%1/v1/live/sessions").arg(server.port())));
        request.setRawHeader("Authorization", QByteArray("Bearer ") + key);
        socket.open(request);
    }

    void send(const Json& message) { socket.sendTextMessage(QString::fromStdString(dumpJson(message))); }
    void start()
    {
        OpenAILiveSetupOptions options;
        options.tools = {{{"type", "function"}, {"name", "set_reminder"}}};
        send(OpenAILiveMessage::sessionStart(options, OpenAILiveMessage::AudioFormat::declared));
    }
    void type(const char* text)
    {
        send(OpenAILiveMessage::backendMessage(text));
        send(OpenAILiveMessage::responseCreate("create_1"));
    }
    bool got(const char* type) const { return types.contains(type); }
    void say()
    {
        for (int count = 0; count < 25; ++count)
            send(OpenAILiveMessage::audio(loudChunk()));
    }

    QWebSocket socket;
    bool isConnected = false;
    bool isOver = false;
    std::multiset<std::string> types;
    std::vector<std::string> order;
    std::string heard;
    std::string said;
    std::string calledWith;
    std::string errorCode;
    qint64 soundBytes = 0;
    double contextRatio = 0;

    void take(const QString& text)
    {
        const Json message = parseJson(text.toStdString()).value_or(Json{{"type", "nonsense"}});
        const std::string type = *readString(message, "type");
        types.insert(type);
        order.push_back(type);
        if (type == "session.output_transcript.delta")
            said += *readString(message, "delta");
        if (type == "session.input_transcript.delta")
            heard += *readString(message, "delta");
        if (type == "session.output_audio.delta")
            soundBytes += static_cast<qint64>(base64Decode(*readString(message, "delta"))->size());
        if (type == "session.usage.updated")
            contextRatio = readNumber(*memberOf(message, "context_window"), "usage_ratio").value_or(0);
        if (type == "error")
            errorCode = *readString(*memberOf(message, "error"), "code");
        if (type == "response.event")
            takeEvent(*memberOf(message, "event"));
    }

private:
    void takeEvent(const Json& event)
    {
        if (readString(event, "type") != "response.output_item.done")
            return;
        const Json& item = *memberOf(event, "item");
        calledWith = *readString(item, "arguments");
        send(OpenAILiveMessage::functionOutput(*readString(item, "call_id"), isSet).front());
        send(OpenAILiveMessage::responseCreate("create_2"));
    }
};

constexpr const char* confirmation = "I will remind you to eat on Sunday the 22nd of November at 5 PM.";

} // namespace

TEST(LiveServer, refusesWithAStatus)
{
    LiveServer server(settings());
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost, 0));
    Client stranger(server, "wrong");
    EXPECT_TRUE(
        waitFor([&] { return stranger.isOver || stranger.socket.error() != QAbstractSocket::UnknownSocketError; }));
    EXPECT_FALSE(stranger.isConnected);

    QTcpSocket plain;
    plain.connectToHost(QHostAddress::LocalHost, server.port());
    plain.write("GET /v1/live/sessions HTTP/1.1\r\nAuthorization: Bearer wrong\r\n");
    ASSERT_TRUE(waitFor([&] { return plain.state() == QTcpSocket::ConnectedState; }));
    plain.write("\r\n");
    ASSERT_TRUE(waitFor([&] { return plain.state() == QTcpSocket::UnconnectedState; }));
    EXPECT_TRUE(plain.readAll().startsWith("HTTP/1.1 401 Unauthorized\r\n"));
    EXPECT_EQ(server.sessionCount(), 0u);
}

TEST(LiveServer, servesTwoSessionsAtOnceAndNoMore)
{
    LiveServer server(settings());
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost, 0));
    Client one(server);
    Client two(server);
    ASSERT_TRUE(waitFor([&] { return one.isConnected && two.isConnected; }));
    Client three(server);
    EXPECT_TRUE(waitFor([&] { return three.isOver; }));
    EXPECT_FALSE(three.isConnected);

    for (Client* client : {&one, &two}) {
        client->start();
        client->type("[They typed] (your reply is shown as text, not spoken) Remind me tomorrow at 5pm to eat");
    }
    for (const Client* client : {&one, &two}) {
        ASSERT_TRUE(waitFor([&] { return client->said == confirmation; })) << client->said;
        EXPECT_EQ(client->calledWith, R"({"text":"remind me tomorrow at 5pm to eat"})");
        EXPECT_EQ(client->soundBytes, 0);
    }
    one.send(OpenAILiveMessage::close());
    ASSERT_TRUE(waitFor([&] { return one.isOver && server.sessionCount() == 1; }));
    EXPECT_TRUE(one.got("session.closed"));
    EXPECT_EQ(one.socket.closeCode(), QWebSocketProtocol::CloseCodeNormal);

    bool stopped = false;
    server.stop([&] { stopped = true; });
    ASSERT_TRUE(waitFor([&] { return stopped && two.isOver; }));
    EXPECT_TRUE(two.got("session.closed"));
    EXPECT_EQ(two.socket.closeCode(), QWebSocketProtocol::CloseCodeGoingAway);
}

/// Speaks the other protocol, with the library's own reader of it.
class GeminiClient {
public:
    explicit GeminiClient(const LiveServer& server, std::optional<std::string> earlier = {})
    {
        QObject::connect(&socket, &QWebSocket::textMessageReceived, &socket, [this](const QString& text) {
            for (const LiveServerEvent& event : LiveServerParser::parse(text.toStdString()))
                take(event);
        });
        QObject::connect(&socket, &QWebSocket::disconnected, &socket, [this] { isOver = true; });
        LiveSetupOptions options;
        options.resumptionHandle = std::move(earlier);
        options.tools = Json::array({{{"functionDeclarations", Json::array({{{"name", "set_reminder"}}})}}});
        QObject::connect(
            &socket, &QWebSocket::connected, &socket, [this, options] { send(LiveMessage::setup(options)); });
        const auto endpoint = LiveEndpoint::create("ws://127.0.0.1:" + std::to_string(server.port()));
        socket.open(requestFor(endpoint->request("secret")));
    }

    void send(const Json& message) { socket.sendTextMessage(QString::fromStdString(dumpJson(message))); }
    void say(int chunks)
    {
        for (int count = 0; count < chunks; ++count)
            send(LiveMessage::audio(loudChunk()));
    }

    QWebSocket socket;
    bool isOver = false;
    std::string story; ///< What happened, in order.
    std::string heard;
    std::string handle;
    std::optional<LiveFunctionCall> call;
    std::size_t soundBytes = 0;

private:
    void take(const LiveServerEvent& event)
    {
        if (std::holds_alternative<live_event::SetupComplete>(event))
            tell("ready");
        else if (std::holds_alternative<live_event::Interrupted>(event))
            tell("interrupted");
        else if (std::holds_alternative<live_event::GenerationComplete>(event))
            tell("generated");
        else if (std::holds_alternative<live_event::TurnComplete>(event))
            tell("complete");
        else if (std::holds_alternative<live_event::GoAway>(event))
            tell("go away");
        else if (const auto* words = std::get_if<live_event::InputTranscript>(&event))
            heard += words->text;
        else if (const auto* newest = std::get_if<live_event::ResumptionHandle>(&event))
            handle = newest->handle;
        else if (const auto* tools = std::get_if<live_event::ToolCall>(&event))
            call = tools->calls.front();
        else if (const auto* sound = std::get_if<live_event::Audio>(&event))
            soundBytes += sound->pcm.size();
    }
    void tell(const char* what) { story += (story.empty() ? "" : ", ") + std::string(what); }
};

TEST(LiveServer, hearsAndSpeaks)
{
    LiveServer server(settings());
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost, 0));
    Client client(server);
    ASSERT_TRUE(waitFor([&] { return client.isConnected; }));
    client.start();
    client.say();
    ASSERT_TRUE(waitFor([&] { return client.soundBytes > 0; }));
    EXPECT_EQ(client.heard, "remind me tomorrow at 5 pm to eat");
    EXPECT_TRUE(client.got("session.delegation.created"));
    ASSERT_TRUE(waitFor([&] { return client.got("session.usage.updated"); }));
    EXPECT_EQ(client.said, confirmation);
    const auto voiced = static_cast<double>(std::string_view(confirmation).size()) * 0.01;
    EXPECT_NEAR(static_cast<double>(client.soundBytes) / 2 / 24000, voiced, 0.05);
}

TEST(LiveServer, goesOnAfterNonsenseAndKeepsFramesInOrder)
{
    LiveServer server(settings());
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost, 0));
    Client client(server);
    ASSERT_TRUE(waitFor([&] { return client.isConnected; }));
    client.socket.sendTextMessage(QStringLiteral("{\"type\":"));
    client.socket.sendBinaryMessage("abc");
    ASSERT_TRUE(waitFor([&] { return client.types.count("error") == 2; }));
    EXPECT_EQ(client.errorCode, "invalid_frame");
    client.start();
    // A long message is read elsewhere; what follows it must wait.
    client.type(("remind me tomorrow at 5 pm to " + std::string(300'000, 'a')).c_str());
    client.socket.sendTextMessage(QStringLiteral("nonsense"));
    ASSERT_TRUE(waitFor([&] { return client.types.count("error") == 3; }));
    EXPECT_TRUE(client.got("response.event")) << "the long message came first";

    client.socket.sendTextMessage(QString(WebSocketTransport::longestMessage + 1024, QLatin1Char('a')));
    ASSERT_TRUE(waitFor([&] { return client.isOver; }));
    EXPECT_EQ(client.socket.closeCode(), QWebSocketProtocol::CloseCodeTooMuchData);
    EXPECT_TRUE(waitFor([&] { return server.sessionCount() == 0; }));
}

TEST(LiveServer, servesGeminiAndTakesAConversationUpAgain)
{
    LiveServer server(settings());
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost, 0));
    {
        GeminiClient client(server);
        ASSERT_TRUE(waitFor([&] { return !client.handle.empty(); }));
        client.say(25);
        ASSERT_TRUE(waitFor([&] { return client.call.has_value(); }));
        EXPECT_EQ(client.heard, "remind me tomorrow at 5 pm to eat");
        client.send(LiveMessage::toolResponse({{client.call->id, client.call->name,
            *parseJson(R"({"status":"which_time","task":"Eat","choices":[{"date":"2026-11-22 05:00"},
                {"date":"2026-11-22 17:00"}]})")}}));
        ASSERT_TRUE(waitFor([&] { return client.soundBytes > 4000; }));
        client.say(5);
        ASSERT_TRUE(waitFor([&] { return client.story.ends_with("interrupted, complete"); })) << client.story;
        const std::size_t before = client.soundBytes;
        waitFor([] { return false; }, 300);
        EXPECT_EQ(client.soundBytes, before) << "nothing more of what was interrupted";
        client.send(LiveMessage::text("thank you"));
        ASSERT_TRUE(waitFor([&] { return client.story.ends_with("generated, complete"); })) << client.story;

        GeminiClient next(server, client.handle);
        ASSERT_TRUE(waitFor([&] { return next.story == "ready"; }));
        next.send(LiveMessage::text("the afternoon"));
        ASSERT_TRUE(waitFor([&] { return next.call.has_value(); }));
        EXPECT_EQ(next.call->args, *parseJson(R"({"task":"Eat","date":"2026-11-22 17:00"})"));
    }
    ASSERT_TRUE(waitFor([&] { return server.sessionCount() == 0; }));
    GeminiClient stranger(server, "handle_0");
    ASSERT_TRUE(waitFor([&] { return stranger.isOver; }));
    EXPECT_EQ(stranger.socket.closeCode(), QWebSocketProtocol::CloseCodePolicyViolated);
    GeminiClient wrong(server);
    ASSERT_TRUE(waitFor([&] { return wrong.story == "ready"; }));
    wrong.send({{"dance", 1}});
    ASSERT_TRUE(waitFor([&] { return wrong.isOver; }));
    EXPECT_EQ(int(wrong.socket.closeCode()), 1007);
}

TEST(LiveServer, servesCalls)
{
    auto with = settings({"udp-blocked@2"});
    with.mostSessions = 4;
    LiveServer server(with);
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost, 0));
    QNetworkAccessManager network;
    QObject main;
    Client reader(server); // Only its way of reading is used.
    ASSERT_TRUE(waitFor([&] { return reader.isConnected; }));
    std::string offer;
    bool isOpen = false;
    std::size_t soundBytes = 0;
    WebRTCPeer::Reports reports;
    reports.descriptionReady = [&](const std::string& sdp) { offer = sdp; };
    reports.channelOpened = [&] { isOpen = true; };
    reports.textReceived = [&](const std::string& text) { reader.take(QString::fromStdString(text)); };
    reports.soundReceived = [&](const std::vector<std::uint8_t>& pcm) { soundBytes += pcm.size(); };
    WebRTCPeer peer({.reach = WebRTCPeerOptions::Reach::thisComputer}, reports, [&](std::function<void()> report) {
        QMetaObject::invokeMethod(&main, std::move(report), Qt::QueuedConnection);
    });
    ASSERT_TRUE(waitFor([&] { return !offer.empty(); }));
    OpenAILiveSetupOptions options;
    const auto request = OpenAILiveEndpoint::create(addressOf(server))->webRTCRequest("secret", options, offer);
    const auto post = [&](const std::string& body) {
        std::unique_ptr<QNetworkReply> reply(network.post(requestFor(request), QByteArray::fromStdString(body)));
        EXPECT_TRUE(waitFor([&] { return reply->isFinished(); }));
        return std::pair(
            reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(), reply->readAll().toStdString());
    };
    const auto blocked = post(request.body); // The second guest: the reader was the first.
    const auto nowhere = OpenAILiveEndpoint::webRTCAnswer(blocked.second);
    ASSERT_TRUE(nowhere) << blocked.second;
    EXPECT_NE(nowhere->sdp.find("192.0.2.1 9 typ"), std::string::npos);
    EXPECT_EQ(post("{}").first, 400);
    const auto answer = OpenAILiveEndpoint::webRTCAnswer(post(request.body).second);
    ASSERT_TRUE(answer);
    peer.takeDescription(answer->sdp);
    ASSERT_TRUE(waitFor([&] { return isOpen && reader.got("session.started"); }));
    Bytes loud;
    for (int count = 0; count < 25; ++count) {
        const Bytes chunk = loudChunk();
        loud.insert(loud.end(), chunk.begin(), chunk.end());
    }
    peer.sendSound(loud);
    ASSERT_TRUE(waitFor([&] { return soundBytes > 4800; }));
    EXPECT_EQ(reader.heard, "remind me tomorrow at 5 pm to eat");
    EXPECT_EQ(reader.soundBytes, 0) << "sound has its own way";
    EXPECT_TRUE(peer.sendText(dumpJson(OpenAILiveMessage::close())));
    EXPECT_TRUE(waitFor([&] { return reader.got("session.closed"); }));
}

TEST(LiveServer, answersTypedTurnsAsAStream)
{
    LiveServer server(settings({"refuse=403:service_tier@1", "drop=3@3"}));
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost, 0));
    QNetworkAccessManager network;
    ResponsesRequest question;
    question.input = {openai_item::Message{"user", "[They typed] hello"}};
    struct Row {
        int status;
        std::string text;
        bool isWhole;
    };
    const Row rows[] = {
        {403, "", false}, {200, "Hello. What can I do for you?", true}, {200, "Hello. What can I do for", false}};
    for (const Row& row : rows) {
        const auto request = ResponsesEndpoint::create(addressOf(server))->request("secret", question);
        std::unique_ptr<QNetworkReply> reply(
            network.post(requestFor(request), QByteArray::fromStdString(request.body)));
        ASSERT_TRUE(waitFor([&] { return reply->isFinished(); }));
        EXPECT_EQ(reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(), row.status);
        const std::string body = reply->readAll().toStdString();
        if (row.status == 403) {
            EXPECT_EQ(OpenAILiveEndpoint::refusedSetting(403, body), RefusedSetting::serviceTier) << body;
        }
        ServerSentEvents events;
        ResponsesStreamParser parser;
        std::string text;
        for (const ServerSentEvent& event : events.add(body)) {
            for (const ResponsesStreamEvent& fact : parser.read(event.data)) {
                if (const auto* delta = std::get_if<responses_event::TextDelta>(&fact))
                    text += delta->delta;
            }
        }
        EXPECT_EQ(parser.isEnded(), row.isWhole) << body;
        EXPECT_EQ(text, row.text);
    }
}

TEST(LiveServer, failsOnPurpose)
{
    struct Row {
        std::vector<const char*> faults;
        std::function<bool(const Client&)> happened;
    };
    const auto closedWith = [](int code) {
        return [code](const Client& client) { return client.isOver && client.socket.closeCode() == code; };
    };
    const Row rows[] = {
        {{"refuse=429"}, [](const Client& client) { return client.isOver && !client.isConnected; }},
        {{"close=1011:2"}, closedWith(1011)},
        {{"close=1008:1"}, closedWith(1008)},
        {{"drop=3"}, [](const Client& client) { return client.isOver && client.order.size() <= 3; }},
        {{"age=100ms"}, [](const Client& client) { return client.isOver && client.got("session.closed"); }},
        {{"close-in-tool"}, closedWith(1011)},
        {{"malformed=1"}, [](const Client& client) { return client.got("nonsense") && client.said == confirmation; }},
        {{"duplicate"}, [](const Client& client) { return client.types.count("session.started") == 2; }},
        {{"reorder"},
            [](const Client& client) { return client.order.size() > 1 && client.order[1] == "session.started"; }},
        {{"reject-create"}, [](const Client& client) { return client.errorCode == "response_rejected"; }},
        {{"context=95"}, [](const Client& client) { return client.contextRatio == 0.95; }},
        {{"oversized=2"}, [](const Client& client) { return client.isOver; }},
        {{"slow=100ms"}, [](const Client& client) { return client.said == confirmation; }},
        {{"drop=1@2"}, [](const Client& client) { return client.said == confirmation; }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.faults.front());
        LiveServer server(settings(row.faults));
        ASSERT_TRUE(server.listen(QHostAddress::LocalHost, 0));
        Client client(server);
        client.socket.setMaxAllowedIncomingMessageSize(1024 * 1024);
        waitFor([&] { return client.isConnected || client.isOver; });
        client.start();
        client.type("[They typed] (your reply is shown as text, not spoken) Remind me tomorrow at 5pm to eat");
        EXPECT_TRUE(waitFor([&] { return row.happened(client); }, 3000))
            << client.socket.closeCode() << " " << client.said;
    }
}

TEST(LiveServer, canHangAndAnswerPingsLate)
{
    LiveServer server(settings({"half-open=1@1", "late-pong=300ms@2"}));
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost, 0));
    Client dead(server);
    ASSERT_TRUE(waitFor([&] { return dead.isConnected; }));
    dead.start();
    ASSERT_TRUE(waitFor([&] { return dead.got("session.started"); }));
    Client late(server);
    ASSERT_TRUE(waitFor([&] { return late.isConnected; }));
    QElapsedTimer elapsed;
    elapsed.start();
    qint64 deadAfter = -1, lateAfter = -1;
    QObject::connect(&dead.socket, &QWebSocket::pong, &dead.socket, [&] { deadAfter = elapsed.elapsed(); });
    QObject::connect(&late.socket, &QWebSocket::pong, &late.socket, [&] { lateAfter = elapsed.elapsed(); });
    dead.socket.ping("here?");
    late.socket.ping("here?");
    dead.send(OpenAILiveMessage::close());
    ASSERT_TRUE(waitFor([&] { return lateAfter >= 0; }));
    EXPECT_GE(lateAfter, 290);
    EXPECT_EQ(deadAfter, -1);
    EXPECT_FALSE(dead.isOver);
}

TEST(LiveServer, saysThatItGoesAwayAndGoes)
{
    LiveServer server(settings({"go-away=100ms:150ms", "reject-handle@2"}));
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost, 0));
    GeminiClient client(server);
    ASSERT_TRUE(waitFor([&] { return client.isOver; }));
    EXPECT_EQ(client.story, "ready, go away");
    EXPECT_EQ(client.socket.closeCode(), QWebSocketProtocol::CloseCodeGoingAway);
    GeminiClient again(server, client.handle);
    ASSERT_TRUE(waitFor([&] { return again.isOver; }));
    EXPECT_EQ(again.story, "");
}

TEST(LiveServer, encryptsWithTheCertificateItIsGiven)
{
    QFile file(QStringLiteral(QUORVELL_FIXTURES "/connections/selfSigned.pem"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray pem = file.readAll();
    QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
    tls.setLocalCertificate(QSslCertificate(pem));
    tls.setPrivateKey(QSslKey(pem, QSsl::Rsa).isNull() ? QSslKey(pem, QSsl::Ec) : QSslKey(pem, QSsl::Rsa));
    auto with = settings();
    with.tls = tls;
    LiveServer server(with); // The certificate names 127.0.0.1 and localhost.
    ASSERT_TRUE(server.listen(QHostAddress(QStringLiteral("127.0.0.2")), 0));
    QNetworkRequest request(QUrl(QStringLiteral("wss://127.0.0.2:%1/v1/live/sessions").arg(server.port())));
    request.setRawHeader("Authorization", "Bearer secret");
    QSslConfiguration trusting = QSslConfiguration::defaultConfiguration();
    trusting.setCaCertificates({QSslCertificate(pem)});
    for (const bool overlooksTheName : {false, true}) {
        QWebSocket socket;
        socket.setSslConfiguration(trusting);
        bool isConnected = false, isRefused = false;
        QObject::connect(&socket, &QWebSocket::connected, &socket, [&] { isConnected = true; });
        QObject::connect(&socket, &QWebSocket::sslErrors, &socket, [&](const QList<QSslError>& errors) {
            isRefused = true;
            if (overlooksTheName)
                socket.ignoreSslErrors(errors);
        });
        socket.open(request);
        EXPECT_TRUE(waitFor([&] { return isConnected || (isRefused && !overlooksTheName); }));
        EXPECT_EQ(isConnected, overlooksTheName);
    }
}

} // namespace quorvell
