// SPDX-License-Identifier: MIT
// A service whose recogniser and voice are made up, and clients of its protocols.
#pragma once

#include "LiveService/server/LiveServer.h"
#include "LiveService/server/WebSocketTransport.h"
#include "Media/webrtc/WebRTCPeer.h"
#include "QtApplication.h"
#include "QuorvellCore/live/wire/gemini/GeminiLiveEndpoint.h"
#include "QuorvellCore/live/wire/gemini/LiveMessage.h"
#include "QuorvellCore/live/wire/gemini/LiveServerParser.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveEndpoint.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveMessage.h"
#include "QuorvellCore/live/wire/responses/ResponsesEndpoint.h"
#include "QuorvellCore/live/wire/responses/ResponsesStreamParser.h"
#include "QuorvellCore/live/wire/transport/ServerSentEvents.h"
#include "QuorvellCore/text/Base64.h"

#include <QCoreApplication>
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

namespace quorvell::test {

/// Hears "remind me ..." in every sound, and speaks 10 ms of sound for each letter.
class FakeSpeech : public SpeechPort {
public:
    void expectSpeech() override { }
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

inline bool waitFor(const std::function<bool()>& holds, int milliseconds = 5000)
{
    return runUntil(holds, std::chrono::milliseconds(milliseconds));
}

inline LiveServer::Settings settings(const std::vector<const char*>& faultTexts = {})
{
    needQtApplication();
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

/// Names 127.0.0.1 and localhost.
inline QSslConfiguration selfSignedTls()
{
    QFile file(QStringLiteral(QUORVELL_FIXTURES "/connections/selfSigned.pem"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray pem = file.readAll();
    QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
    tls.setLocalCertificate(QSslCertificate(pem));
    tls.setPrivateKey(QSslKey(pem, QSsl::Rsa).isNull() ? QSslKey(pem, QSsl::Ec) : QSslKey(pem, QSsl::Rsa));
    return tls;
}

struct ListeningServer : LiveServer {
    explicit ListeningServer(Settings with = settings())
        : LiveServer(with)
        , tls(with.tls)
    {
        EXPECT_TRUE(listen(QHostAddress::LocalHost, 0));
    }

    std::optional<QSslConfiguration> tls;
};

inline constexpr const char* isSet =
    R"({"status":"set","task":"Eat","date":"2026-11-22 17:00","when":"Sunday 22 November at 5 PM"})";

/// 40 ms at 24000 Hz.
inline Bytes loudChunk()
{
    Bytes chunk;
    for (int sample = 0; sample < 960; ++sample)
        chunk.insert(chunk.end(), {0, static_cast<std::uint8_t>(sample % 20 < 10 ? 30 : 226)});
    return chunk;
}

inline QNetworkRequest requestFor(const WebRequest& request)
{
    QNetworkRequest result(QUrl(QString::fromStdString(request.url)));
    for (const auto& [name, value] : request.headers)
        result.setRawHeader(QByteArray::fromStdString(name), QByteArray::fromStdString(value));
    return result;
}

inline std::string addressOf(const LiveServer& server)
{
    return "http://127.0.0.1:" + std::to_string(server.port());
}

/// A client that answers set_reminder and remembers what came.
class Client {
public:
    explicit Client(const ListeningServer& server, const char* key = "secret")
    {
        if (server.tls) {
            QSslConfiguration trusting = QSslConfiguration::defaultConfiguration();
            trusting.setCaCertificates({server.tls->localCertificate()});
            socket.setSslConfiguration(trusting);
        }
        QObject::connect(
            &socket, &QWebSocket::textMessageReceived, &socket, [this](const QString& text) { take(text); });
        QObject::connect(&socket, &QWebSocket::connected, &socket, [this] { isConnected = true; });
        QObject::connect(&socket, &QWebSocket::disconnected, &socket, [this] { isOver = true; });
        const QString scheme = server.tls ? QStringLiteral("wss") : QStringLiteral("ws");
        QNetworkRequest request(
            QUrl(QStringLiteral("%1://127.0.0.1:%2/v1/live/sessions").arg(scheme).arg(server.port())));
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

inline constexpr const char* confirmation = "I will remind you to eat on Sunday the 22nd of November at 5 PM.";

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
        const auto endpoint = GeminiLiveEndpoint::create("ws://127.0.0.1:" + std::to_string(server.port()));
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

} // namespace quorvell::test
