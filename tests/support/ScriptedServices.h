// SPDX-License-Identifier: MIT
// Live services that do what a test says, on loopback: over a WebSocket, over HTTP, over WebRTC.
#pragma once

#include "Media/webrtc/WebRTCPeer.h"
#include "QtApplication.h"
#include "Quorvell/connections/access/HostedAccess.h"
#include "RecordingLiveObserver.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <QFile>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <QWebSocket>
#include <QWebSocketServer>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace quorvell {

inline LiveAccess accessTo(quint16 port, OpenAILiveEndpoint::Security security = OpenAILiveEndpoint::Security::none)
{
    return {{"127.0.0.1:" + std::to_string(port), security}, "secret-key"};
}

/// Where a script tells the client something, whatever carries it.
using Teller = std::function<void(const Json& message)>;

inline Teller tellerOf(QWebSocket& peer)
{
    return [&peer](const Json& message) { peer.sendTextMessage(QString::fromStdString(dumpJson(message))); };
}

/// Each text frame goes to the script.
class ScriptedLiveServer {
public:
    using Script = std::function<void(QWebSocket& peer, const std::string& message)>;

    explicit ScriptedLiveServer(Script script, QWebSocketServer::SslMode mode = QWebSocketServer::NonSecureMode)
        : m_script(std::move(script))
        , m_server(QStringLiteral("test"), mode)
    {
        if (mode == QWebSocketServer::SecureMode)
            m_server.setSslConfiguration(selfSigned());
        m_server.listen(QHostAddress::LocalHost);
        QObject::connect(&m_server, &QWebSocketServer::newConnection, &m_server, [this] { accept(); });
    }

    LiveAccess access(OpenAILiveEndpoint::Security security = OpenAILiveEndpoint::Security::none) const
    {
        return accessTo(m_server.serverPort(), security);
    }

    /// What the clients sent, their start of the session included.
    std::vector<std::string> received;
    std::string keyHeader;
    int connections = 0;

private:
    static QSslConfiguration selfSigned()
    {
        QFile file(QStringLiteral(QUORVELL_FIXTURES "/connections/selfSigned.pem"));
        file.open(QIODevice::ReadOnly);
        const QByteArray pem = file.readAll();
        QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
        configuration.setPrivateKey(QSslKey(pem, QSsl::Ec));
        configuration.setLocalCertificate(QSslCertificate(pem));
        return configuration;
    }

    void accept()
    {
        m_peers.emplace_back(m_server.nextPendingConnection());
        QWebSocket* peer = m_peers.back().get();
        ++connections;
        const QNetworkRequest request = peer->request();
        keyHeader = (request.rawHeader("Authorization") + request.rawHeader("x-goog-api-key")).toStdString();
        QObject::connect(peer, &QWebSocket::textMessageReceived, peer, [this, peer](const QString& text) {
            received.push_back(text.toStdString());
            m_script(*peer, received.back());
        });
    }

    Script m_script;
    QWebSocketServer m_server;
    std::vector<std::unique_ptr<QWebSocket>> m_peers;
};

/// Answers each request over HTTP as the script says, piece by piece if it wants. Whatever is no whole request (an
/// upgrade) is a request without a body.
class ScriptedWebServer {
public:
    using Script = std::function<void(QTcpSocket& peer, const std::string& body)>;

    explicit ScriptedWebServer(Script script)
        : m_script(std::move(script))
    {
        m_server.listen(QHostAddress::LocalHost);
        QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] {
            QTcpSocket* peer = m_server.nextPendingConnection();
            QObject::connect(peer, &QTcpSocket::readyRead, peer, [this, peer] { read(*peer); });
        });
    }

    LiveAccess access() const { return accessTo(m_server.serverPort()); }

    static QByteArray answer(const char* status, const QByteArray& body = {})
    {
        return QByteArray("HTTP/1.1 ") + status + "\r\nContent-Length: " + QByteArray::number(body.size())
            + "\r\nConnection: close\r\n\r\n" + body;
    }
    /// Always the same bytes; "{accept}" in them becomes what a WebSocket client waits for.
    static Script always(const QByteArray& bytes)
    {
        return [bytes](QTcpSocket& peer, const std::string& request) {
            QByteArray text = bytes;
            peer.write(text.replace("{accept}", acceptFor(QByteArray::fromStdString(request))));
        };
    }

    /// What turns a connection into a WebSocket that says one thing, shorter than 126 bytes.
    static QByteArray upgradeSaying(const QByteArray& request, const QByteArray& text)
    {
        return "HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
               "Sec-WebSocket-Accept: "
            + acceptFor(request) + "\r\n\r\n\x81" + static_cast<char>(text.size()) + text;
    }

    int requests = 0;

private:
    void read(QTcpSocket& peer)
    {
        QByteArray& request = m_requests[&peer] += peer.readAll();
        const qsizetype headEnd = request.indexOf("\r\n\r\n");
        if (headEnd < 0)
            return;
        const QByteArray lower = request.left(headEnd).toLower();
        const qsizetype place = lower.indexOf("content-length:");
        const qsizetype length =
            place < 0 ? 0 : lower.mid(place + 15, lower.indexOf('\r', place) - place - 15).trimmed().toLongLong();
        if (request.size() < headEnd + 4 + length)
            return;
        ++requests;
        const std::string body = (length > 0 ? request.mid(headEnd + 4) : request).toStdString();
        request.clear();
        m_script(peer, body);
    }

    static QByteArray acceptFor(const QByteArray& request)
    {
        const QByteArray name = "Sec-WebSocket-Key: ";
        const qsizetype start = request.indexOf(name) + name.size();
        const QByteArray key = request.mid(start, request.indexOf("\r\n", start) - start);
        return QCryptographicHash::hash(key + "258EAFA5-E914-47DA-95CA-C5AB0DC85B11", QCryptographicHash::Sha1)
            .toBase64();
    }

    Script m_script;
    std::map<QTcpSocket*, QByteArray> m_requests;
    QTcpServer m_server;
};

/// Makes a session for each POST. The script gets the channel's texts, and an empty one when it opens. A WebSocket is
/// only told that its session has started.
class ScriptedPeerServer {
public:
    using Script = std::function<void(ScriptedPeerServer& server, const std::string& message)>;

    explicit ScriptedPeerServer(Script script)
        : m_script(std::move(script))
        , m_web([this](QTcpSocket& client, const std::string& body) { beginSession(client, body); })
    {
    }

    LiveAccess access() const { return m_web.access(); }
    Teller teller()
    {
        return [this](const Json& message) { static_cast<void>(peer->sendText(dumpJson(message))); };
    }

    std::unique_ptr<WebRTCPeer> peer; ///< Of the last session.
    std::vector<std::string> sessions; ///< What was asked for.
    std::vector<std::uint8_t> heard;
    QByteArray refusal; ///< Sent once instead of an answer, where it is set.
    bool hangsUp = false; ///< Answers, and is gone before the peers can meet.

private:
    void beginSession(QTcpSocket& client, const std::string& body)
    {
        sessions.push_back(body);
        if (body.starts_with("GET ")) {
            client.write(ScriptedWebServer::upgradeSaying(
                QByteArray::fromStdString(body), R"({"type":"session.started","session":{"id":"sess_2"}})"));
            return;
        }
        if (!refusal.isEmpty()) {
            client.write(std::exchange(refusal, {}));
            return;
        }
        WebRTCPeer::Reports reports;
        reports.descriptionReady = [this, &client](const std::string& sdp) {
            const Json answer{{"session", {{"id", "sess_1"}}}, {"transport", {{"type", "webrtc"}, {"sdp", sdp}}}};
            if (hangsUp)
                peer.reset();
            client.write(ScriptedWebServer::answer("200 OK", QByteArray::fromStdString(dumpJson(answer))));
        };
        reports.channelOpened = [this] { m_script(*this, {}); };
        reports.textReceived = [this](const std::string& text) { m_script(*this, text); };
        reports.soundReceived = [this](const auto& pcm) { heard.insert(heard.end(), pcm.begin(), pcm.end()); };
        peer = std::make_unique<WebRTCPeer>(
            WebRTCPeerOptions{WebRTCPeerOptions::Role::answers, WebRTCPeerOptions::Reach::thisComputer},
            std::move(reports), [](std::function<void()> action) {
                QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(action), Qt::QueuedConnection);
            });
        const auto json = parseJson(body);
        const Json* transport = json ? memberOf(*json, "transport") : nullptr;
        peer->takeDescription(transport ? readString(*transport, "sdp").value_or("") : "");
    }

    Script m_script;
    ScriptedWebServer m_web;
};

} // namespace quorvell
