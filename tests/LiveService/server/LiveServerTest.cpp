#include "LiveService/server/LiveServer.h"

#include "QuorvellCore/live/wire/OpenAILiveMessage.h"
#include "QuorvellCore/text/Base64.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QNetworkRequest>
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

LiveServer::Settings settings()
{
    const std::chrono::sys_days day = std::chrono::year(2026) / 11 / 21;
    const auto count = std::make_shared<std::atomic<int>>(0);
    return {.token = "secret",
        .calendar = *Calendar::create("Europe/Berlin", "en_US"),
        .wallClock = [day] { return Instant(day); },
        .ids = [count](std::string_view prefix) { return std::string(prefix) + std::to_string(++*count); },
        .makeSpeech = [] { return std::make_unique<FakeSpeech>(); },
        .mostSessions = 2};
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

    QWebSocket socket;
    bool isConnected = false;
    bool isOver = false;
    std::multiset<std::string> types;
    std::string heard;
    std::string said;
    std::string calledWith;
    std::string errorCode;
    qint64 soundBytes = 0;

private:
    void take(const QString& text)
    {
        const Json message = *parseJson(text.toStdString());
        const std::string type = *readString(message, "type");
        types.insert(type);
        if (type == "session.output_transcript.delta")
            said += *readString(message, "delta");
        if (type == "session.input_transcript.delta")
            heard += *readString(message, "delta");
        if (type == "session.output_audio.delta")
            soundBytes += static_cast<qint64>(base64Decode(*readString(message, "delta"))->size());
        if (type == "error")
            errorCode = *readString(*memberOf(message, "error"), "code");
        if (type == "response.event")
            takeEvent(*memberOf(message, "event"));
    }

    void takeEvent(const Json& event)
    {
        if (readString(event, "type") != "response.output_item.done")
            return;
        const Json& item = *memberOf(event, "item");
        calledWith = *readString(item, "arguments");
        send(OpenAILiveMessage::functionOutput(*readString(item, "call_id"),
            R"({"status":"set","task":"Eat","date":"2026-11-22 17:00","when":"Sunday 22 November at 5 PM"})")
                 .front());
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

TEST(LiveServer, hearsAndSpeaks)
{
    LiveServer server(settings());
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost, 0));
    Client client(server);
    ASSERT_TRUE(waitFor([&] { return client.isConnected; }));
    client.start();
    Bytes chunk;
    for (int sample = 0; sample < 960; ++sample)
        chunk.insert(chunk.end(), {0, static_cast<std::uint8_t>(sample % 20 < 10 ? 30 : 226)});
    for (int count = 0; count < 25; ++count)
        client.send(OpenAILiveMessage::audio(chunk));
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

    client.socket.sendTextMessage(QString(LiveServerSession::longestMessage + 1024, QLatin1Char('a')));
    ASSERT_TRUE(waitFor([&] { return client.isOver; }));
    EXPECT_EQ(client.socket.closeCode(), QWebSocketProtocol::CloseCodeTooMuchData);
    EXPECT_TRUE(waitFor([&] { return server.sessionCount() == 0; }));
}

} // namespace quorvell
