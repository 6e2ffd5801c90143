// SPDX-License-Identifier: MIT
// Catches a service that lets the wrong client in, mixes up sessions, or breaks on nonsense.
#include "LiveService/server/ServiceDoor.h"
#include "QuorvellCore/live/wire/transport/WebSocketFrame.h"
#include "ServiceClients.h"

#include <tuple>

namespace quorvell::test {

TEST(LiveServer, refusesWithAStatus)
{
    const ListeningServer server;
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

    std::vector<std::unique_ptr<QTcpSocket>> silent(ServiceDoor::mostStrangers + 1);
    for (auto& socket : silent) {
        socket = std::make_unique<QTcpSocket>();
        socket->connectToHost(QHostAddress::LocalHost, server.port());
    }
    const auto isClosed = [](const auto& socket) { return socket->state() == QTcpSocket::UnconnectedState; };
    EXPECT_TRUE(waitFor([&] { return std::ranges::count_if(silent, isClosed) == 1; })) << "one too many";
}

/// Connections that never say anything.
std::vector<std::unique_ptr<QTcpSocket>> silentOnes(const LiveServer& server, std::size_t count)
{
    std::vector<std::unique_ptr<QTcpSocket>> silent(count);
    for (auto& socket : silent) {
        socket = std::make_unique<QTcpSocket>();
        socket->connectToHost(QHostAddress::LocalHost, server.port());
    }
    return silent;
}

TEST(LiveServer, isOpenToWhoeverShowsTheKeyHoweverManyDoNot)
{
    auto encrypted = settings();
    encrypted.tls = selfSignedTls();
    for (const auto& with : {settings(), encrypted}) {
        SCOPED_TRACE(with.tls ? "with TLS" : "plain");
        const ListeningServer server(with);
        Client early(server);
        ASSERT_TRUE(waitFor([&] { return early.isConnected; }));
        {
            const auto silent = silentOnes(server, ServiceDoor::mostStrangers + 10);
            const auto isClosed = [](const auto& socket) { return socket->state() == QTcpSocket::UnconnectedState; };
            EXPECT_TRUE(waitFor([&] { return std::ranges::count_if(silent, isClosed) == 10; })) << "the oldest go";
            EXPECT_TRUE(isClosed(silent.front()));
            Client beside(server);
            EXPECT_TRUE(waitFor([&] { return beside.isConnected; }));
        }
        waitFor([&] { return server.sessionCount() == 1; });
        Client after(server);
        EXPECT_TRUE(waitFor([&] { return after.isConnected; }));
        EXPECT_FALSE(early.isOver) << "who is in stays in";
    }
}

/// Bytes on an upgraded connection that no library would send.
class RawClient {
public:
    RawClient(const LiveServer& server, const char* from)
    {
        socket.bind(QHostAddress(QString::fromLatin1(from)), sharedPort);
        socket.connectToHost(QHostAddress::LocalHost, server.port());
        socket.write(
            "GET /v1/live/sessions HTTP/1.1\r\nHost: x\r\nAuthorization: Bearer secret\r\nUpgrade: websocket\r\n"
            "Connection: Upgrade\r\nSec-WebSocket-Version: 13\r\nSec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n\r\n");
        EXPECT_TRUE(waitFor([&] { return socket.state() == QTcpSocket::ConnectedState; }));
        sharedPort = socket.localPort();
        EXPECT_TRUE(waitFor([&] { return reads("s3pPLMBiTxaQ9kYGzzhZRbK+xOo=\r\n\r\n"); }));
    }
    void send(WebSocketFrame::Kind kind, std::string_view payload, std::optional<WebSocketFrame::Mask> mask)
    {
        const std::string frame = WebSocketFrame::bytes(kind, payload, mask);
        socket.write(frame.data(), qint64(frame.size()));
    }
    bool reads(const QByteArray& text)
    {
        read += socket.readAll();
        return read.contains(text);
    }

    QTcpSocket socket;
    QByteArray read;
    static inline quint16 sharedPort = 0;
};

TEST(LiveServer, holdsToTheProtocolOfWebSockets)
{
    const ListeningServer server;
    RawClient::sharedPort = 0;
    RawClient unmasked(server, "127.0.0.2");
    unmasked.send(WebSocketFrame::Kind::text, "{}", std::nullopt);
    EXPECT_TRUE(waitFor([&] { return unmasked.reads(QByteArray("\x03\xEA", 2)); })) << "closed with 1002";
    EXPECT_TRUE(waitFor([&] { return unmasked.socket.state() == QTcpSocket::UnconnectedState; }));
}

TEST(LiveServer, tellsTwoClientsOfOnePortApart)
{
    const ListeningServer server;
    RawClient::sharedPort = 0;
    RawClient one(server, "127.0.0.2"), two(server, "127.0.0.3");
    ASSERT_EQ(one.socket.localPort(), two.socket.localPort());
    for (RawClient* client : {&one, &two}) {
        client->send(WebSocketFrame::Kind::text, "{}", WebSocketFrame::Mask{});
        EXPECT_TRUE(waitFor([&] { return client->reads("\"error\""); }));
    }
}

TEST(LiveServer, answersOnlyTheLastPingOfAClientThatNeverReads)
{
    const ListeningServer server;
    RawClient::sharedPort = 0;
    RawClient client(server, "127.0.0.2");
    client.send(WebSocketFrame::Kind::text,
        dumpJson(OpenAILiveMessage::sessionStart({}, OpenAILiveMessage::AudioFormat::declared)),
        WebSocketFrame::Mask{});
    client.socket.setReadBufferSize(1);
    const std::string payload(WebSocketFrame::longestControl, 'p');
    // Were each answered, 24 MiB of answers would wait in the service, or the client would never get this far.
    for (int count = 0; count < 200'000; ++count)
        client.send(WebSocketFrame::Kind::ping, payload, WebSocketFrame::Mask{});
    client.send(WebSocketFrame::Kind::ping, "the last", WebSocketFrame::Mask{});
    ASSERT_TRUE(waitFor([&] { return client.socket.bytesToWrite() == 0; }, 20'000));
    client.socket.setReadBufferSize(0);
    EXPECT_TRUE(waitFor([&] { return client.reads("the last"); }));
    EXPECT_LT(client.read.size(), 16 * 1024 * 1024) << "and what the two kernels hold";
}

TEST(LiveServer, servesTwoSessionsAtOnceAndNoMore)
{
    ListeningServer server;
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

TEST(LiveServer, hearsAndSpeaks)
{
    const ListeningServer server;
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
    const ListeningServer server;
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

    client.socket.sendTextMessage(QString(qsizetype(WebSocketTransport::longestMessage) + 1024, QLatin1Char('a')));
    ASSERT_TRUE(waitFor([&] { return client.isOver; }));
    EXPECT_EQ(client.socket.closeCode(), QWebSocketProtocol::CloseCodeTooMuchData);
    EXPECT_TRUE(waitFor([&] { return server.sessionCount() == 0; }));
}

TEST(LiveServer, servesGeminiAndTakesAConversationUpAgain)
{
    const ListeningServer server;
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
    GeminiClient hasty(server);
    ASSERT_TRUE(waitFor([&] { return hasty.story == "ready"; }));
    for (int turn = 0; turn < 2; ++turn) {
        hasty.say(25);
        hasty.send(LiveMessage::audioStreamEnd());
    }
    const std::string twice = "remind me tomorrow at 5 pm to eatremind me tomorrow at 5 pm to eat";
    EXPECT_TRUE(waitFor([&] { return hasty.heard == twice; })) << "no quiet is needed between: " << hasty.heard;
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
    const ListeningServer server(with);
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
    const ListeningServer server(settings({"refuse=403:service_tier@1", "drop=3@3"}));
    QNetworkAccessManager network;
    ResponsesRequest question;
    question.input = {openai_item::Message{"user", "[They typed] hello"}};
    const std::tuple<int, std::string, bool> rows[] = {
        {403, "", false}, {200, "Hello. What can I do for you?", true}, {200, "Hello. What can I do for", false}};
    for (const auto& [status, expected, isWhole] : rows) {
        const auto request = ResponsesEndpoint::create(addressOf(server))->request("secret", question);
        std::unique_ptr<QNetworkReply> reply(
            network.post(requestFor(request), QByteArray::fromStdString(request.body)));
        ASSERT_TRUE(waitFor([&] { return reply->isFinished(); }));
        EXPECT_EQ(reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(), status);
        const std::string body = reply->readAll().toStdString();
        if (status == 403) {
            EXPECT_EQ(OpenAILiveEndpoint::refusedSetting(403, body), RefusedSetting::serviceTier) << body;
        }
        ServerSentEvents events;
        ResponsesStreamParser parser;
        std::string text;
        for (const ServerSentEvent& event : events.add(body))
            for (const ResponsesStreamEvent& fact : parser.read(event.data))
                if (const auto* delta = std::get_if<responses_event::TextDelta>(&fact))
                    text += delta->delta;
        EXPECT_EQ(parser.isEnded(), isWhole) << body;
        EXPECT_EQ(text, expected);
    }
}

} // namespace quorvell::test
