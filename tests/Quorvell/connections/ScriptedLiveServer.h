// A live service that does what a test says: one WebSocket at a time on loopback, each frame from a script.
#pragma once

#include "QtApplication.h"
#include "Quorvell/connections/LiveAccess.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <QFile>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QTcpServer>
#include <QTcpSocket>
#include <QWebSocket>
#include <QWebSocketServer>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace quorvell {

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
        return {{"127.0.0.1:" + std::to_string(m_server.serverPort()), security}, "secret-key"};
    }

    /// What the client sent, its start of the session included.
    std::vector<std::string> received;
    std::string authorization;
    int connections = 0;
    int closeCode = 0;

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
        authorization = peer->request().rawHeader("Authorization").toStdString();
        QObject::connect(peer, &QWebSocket::disconnected, peer, [this, peer] { closeCode = peer->closeCode(); });
        QObject::connect(peer, &QWebSocket::textMessageReceived, peer, [this, peer](const QString& text) {
            received.push_back(text.toStdString());
            m_script(*peer, received.back());
        });
    }

    Script m_script;
    QWebSocketServer m_server;
    std::vector<std::unique_ptr<QWebSocket>> m_peers;
};

/// Answers whatever a client sends first with the same bytes, and then stays silent.
class RawServer {
public:
    explicit RawServer(QByteArray answer)
        : m_answer(std::move(answer))
    {
        m_server.listen(QHostAddress::LocalHost);
        QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] {
            QTcpSocket* peer = m_server.nextPendingConnection();
            QObject::connect(peer, &QTcpSocket::readyRead, peer, [this, peer] {
                const QByteArray request = peer->readAll();
                peer->write(std::exchange(m_answer, {}).replace("{accept}", acceptFor(request)));
            });
        });
    }

    LiveAccess access() const
    {
        return {
            {"127.0.0.1:" + std::to_string(m_server.serverPort()), OpenAILiveEndpoint::Security::none}, "secret-key"};
    }

private:
    static QByteArray acceptFor(const QByteArray& request)
    {
        const QByteArray name = "Sec-WebSocket-Key: ";
        const qsizetype start = request.indexOf(name) + name.size();
        const QByteArray key = request.mid(start, request.indexOf("\r\n", start) - start);
        return QCryptographicHash::hash(key + "258EAFA5-E914-47DA-95CA-C5AB0DC85B11", QCryptographicHash::Sha1)
            .toBase64();
    }

    QByteArray m_answer;
    QTcpServer m_server;
};

} // namespace quorvell
