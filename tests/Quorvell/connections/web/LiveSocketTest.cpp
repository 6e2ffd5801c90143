// SPDX-License-Identifier: MIT
// Catches a service that keeps the event loop to itself, and frames that are answered otherwise than RFC 6455 says.
#include "Quorvell/connections/web/LiveSocket.h"

#include "Quorvell/connections/openai/FairPost.h"
#include "QuorvellCore/live/wire/transport/WebSocketFrame.h"
#include "ScriptedServices.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>

namespace quorvell {
namespace {

using namespace std::chrono_literals;
using Kind = WebSocketFrame::Kind;

QByteArray framed(Kind kind, std::string_view payload, std::optional<WebSocketFrame::Mask> mask = {})
{
    return QByteArray::fromStdString(WebSocketFrame::bytes(kind, payload, mask));
}

QByteArray unfinishedFrame(QByteArray frame)
{
    frame[0] = static_cast<char>(frame[0] & 0x7F);
    return frame;
}

/// Becomes a WebSocket, sends these bytes, and keeps what the client sends from then on.
struct RawService {
    explicit RawService(QByteArray frames)
        : server([this, frames](QTcpSocket& peer, const std::string& request) {
            QObject::disconnect(&peer, &QTcpSocket::readyRead, nullptr, nullptr);
            QObject::connect(&peer, &QTcpSocket::readyRead, &peer, [this, &peer] {
                const QByteArray bytes = peer.readAll();
                for (auto& piece : reader.add({bytes.constData(), static_cast<std::size_t>(bytes.size())}))
                    heard.push_back(std::move(piece));
            });
            peer.write(ScriptedWebServer::upgradeSaying(QByteArray::fromStdString(request), "hello") + frames);
        })
    {
    }

    WebSocketReader reader{WebSocketReader::From::client, 1000};
    std::vector<WebSocketReader::Piece> heard;
    ScriptedWebServer server;
};

struct OpenedSocket {
    explicit OpenedSocket(const RawService& service)
    {
        socket.open(service.server.access().endpoint.request("key"), nullptr);
    }

    std::vector<std::string> texts;
    std::optional<ConnectionFailure> failure;
    LiveSocket socket{{[] {}, [this](const std::string& text) { texts.push_back(text); },
                          [this](const ConnectionFailure& why) { failure = why; }},
        {}};
};

class LiveSocketTest : public testing::Test {
protected:
    void SetUp() override { needQtApplication(); }
};

TEST_F(LiveSocketTest, answersAsTheProtocolSays)
{
    const WebSocketFrame::Mask mask{1, 2, 3, 4};
    QByteArray extended = framed(Kind::text, "x");
    extended[0] = static_cast<char>(0xC1);
    struct Row {
        const char* name;
        QByteArray frames;
        WebSocketReader::Piece answer;
        int code; ///< With which it ends; 0 where it goes on.
        std::vector<std::string> texts{"hello"};
    };
    const Row rows[] = {
        {"a ping amid a message",
            unfinishedFrame(framed(Kind::text, "a")) + framed(Kind::ping, "?") + framed(Kind::continuation, "b"),
            {Kind::pong, "?"}, 0, {"hello", "ab"}},
        {"a text that is no UTF-8", framed(Kind::text, "caf\xE9"), {Kind::close, "", 1007}, 1002},
        {"a frame with a mask", framed(Kind::text, "x", mask), {Kind::close, "", 1002}, 1002},
        {"an extension nobody agreed on", extended, {Kind::close, "", 1002}, 1002},
        {"a good-bye", framed(Kind::close, WebSocketFrame::closePayload(4001, "away")), {Kind::close, "", 4001}, 4001},
        {"one without a code", framed(Kind::close, ""), {Kind::close, "", WebSocketReader::noCode}, 1005},
        {"one with a code of nobody", framed(Kind::close, WebSocketFrame::closePayload(1005, "")),
            {Kind::close, "", 1002}, 1002},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const RawService service(row.frames);
        const OpenedSocket opened(service);
        ASSERT_TRUE(runUntil([&] { return !service.heard.empty(); }));
        EXPECT_EQ(service.heard.front(), row.answer);
        EXPECT_TRUE(runUntil([&] { return opened.texts.size() == row.texts.size(); }));
        EXPECT_EQ(opened.texts, row.texts);
        EXPECT_EQ(opened.failure ? opened.failure->code : 0, row.code);
        EXPECT_EQ(service.reader.problem(), 0) << "each of ours has a mask";
    }
}

TEST_F(LiveSocketTest, readsAllThatIsEncrypted)
{
    const QSslConfiguration usual = QSslConfiguration::defaultConfiguration();
    QSslConfiguration trusting = usual;
    trusting.setCaCertificates(
        QSslCertificate::fromPath(QStringLiteral(QUORVELL_FIXTURES "/connections/selfSigned.pem")));
    QSslConfiguration::setDefaultConfiguration(trusting);
    const std::size_t count = 200;
    const ScriptedLiveServer server(
        [&](QWebSocket& peer, const std::string& text) {
            for (std::size_t message = 0; message < count; ++message)
                peer.sendTextMessage(QString::fromStdString(text));
        },
        QWebSocketServer::SecureMode);
    std::size_t echoed = 0;
    const std::string text(50'000, 'x'); // More than one turn reads, and more than a record holds.
    LiveSocket socket({[&] { socket.send(text); }, [&](const std::string& said) { echoed += said == text ? 1 : 0; },
                          [](const ConnectionFailure& failure) { ADD_FAILURE() << failure.detail; }},
        {});
    socket.open(server.access(OpenAILiveEndpoint::Security::tls).endpoint.request("key"), nullptr);
    EXPECT_TRUE(runUntil([&] { return echoed == count; }, 30s)) << echoed;
    QSslConfiguration::setDefaultConfiguration(usual);
}

TEST_F(LiveSocketTest, aFloodLeavesEverybodyElseTheirTurn)
{
    const std::size_t count = 200'000;
    QByteArray flood;
    for (std::size_t piece = 0; piece < count; ++piece)
        flood += framed(Kind::text, "{\"type\":\"one of very many\"}");
    const RawService service(flood);
    const OpenedSocket opened(service);
    QTimer turns;
    std::size_t before = 0, most = 0;
    QObject::connect(&turns, &QTimer::timeout, &turns, [&] {
        most = std::max(most, opened.texts.size() - before);
        before = opened.texts.size();
    });
    turns.start(0);
    ASSERT_TRUE(runUntil([&] { return opened.texts.size() == count + 1; }, 60s));
    EXPECT_LE(
        most * static_cast<std::size_t>(flood.size()) / count, static_cast<std::size_t>(2 * ServiceStream::mostAtOnce));

    // What other threads hand over is done in shares, too, and in order.
    const auto post = FairPost::make();
    std::vector<int> done;
    std::jthread([&] {
        for (int action = 0; action < 100; ++action)
            post([&done, action] {
                done.push_back(action);
                std::this_thread::sleep_for(1ms);
            });
    }).join();
    std::size_t doneAtFirstTurn = 0;
    QTimer::singleShot(1, &turns, [&] { doneAtFirstTurn = done.size(); });
    ASSERT_TRUE(runUntil([&] { return done.size() == 100; }));
    EXPECT_LT(doneAtFirstTurn, 100U);
    EXPECT_TRUE(std::is_sorted(done.begin(), done.end()));
}

} // namespace
} // namespace quorvell
