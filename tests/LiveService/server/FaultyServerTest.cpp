// SPDX-License-Identifier: MIT
// Catches a service whose deliberate faults do not show on the wire.
#include "ServiceClients.h"

namespace quorvell::test {

TEST(FaultyServer, failsOnPurpose)
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
        const ListeningServer server(settings(row.faults));
        Client client(server);
        client.socket.setMaxAllowedIncomingMessageSize(1024 * 1024);
        waitFor([&] { return client.isConnected || client.isOver; });
        client.start();
        client.type("[They typed] (your reply is shown as text, not spoken) Remind me tomorrow at 5pm to eat");
        EXPECT_TRUE(waitFor([&] { return row.happened(client); }, 3000))
            << client.socket.closeCode() << " " << client.said;
    }
}

TEST(FaultyServer, canHangAndAnswerPingsLate)
{
    const ListeningServer server(settings({"half-open=1@1", "late-pong=300ms@2"}));
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

TEST(FaultyServer, saysThatItGoesAwayAndGoes)
{
    const ListeningServer server(settings({"go-away=100ms:150ms", "reject-handle@2"}));
    GeminiClient client(server);
    ASSERT_TRUE(waitFor([&] { return client.isOver; }));
    EXPECT_EQ(client.story, "ready, go away");
    EXPECT_EQ(client.socket.closeCode(), QWebSocketProtocol::CloseCodeGoingAway);
    GeminiClient again(server, client.handle);
    ASSERT_TRUE(waitFor([&] { return again.isOver; }));
    EXPECT_EQ(again.story, "");
}

TEST(FaultyServer, encryptsWithTheCertificateItIsGiven)
{
    auto with = settings();
    with.tls = selfSignedTls();
    LiveServer server(with); // The certificate names 127.0.0.1 and localhost.
    ASSERT_TRUE(server.listen(QHostAddress(QStringLiteral("127.0.0.2")), 0));
    QNetworkRequest request(QUrl(QStringLiteral("wss://127.0.0.2:%1/v1/live/sessions").arg(server.port())));
    request.setRawHeader("Authorization", "Bearer secret");
    QSslConfiguration trusting = QSslConfiguration::defaultConfiguration();
    trusting.setCaCertificates({with.tls->localCertificate()});
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

} // namespace quorvell::test
