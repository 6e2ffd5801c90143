#include "LiveService/server/UpgradeGate.h"

#include <QTcpSocket>
#include <QTimer>
#include <QWebSocket>

#include <utility>

namespace quorvell {

UpgradeGate::UpgradeGate(std::string token, MayOpen mayOpen, WebSocketOpened webSocketOpened)
    : m_token(std::move(token))
    , m_mayOpen(std::move(mayOpen))
    , m_webSocketOpened(std::move(webSocketOpened))
    , m_upgrader(QStringLiteral("Quorvell"), QWebSocketServer::NonSecureMode)
{
    m_upgrader.setHandshakeTimeout(patience);
    connect(&m_listener, &QTcpServer::newConnection, this, &UpgradeGate::acceptWaiting);
    connect(&m_upgrader, &QWebSocketServer::newConnection, this, &UpgradeGate::takeUpgraded);
}

bool UpgradeGate::listen(const QHostAddress& host, std::uint16_t port)
{
    return m_listener.listen(host, port);
}

void UpgradeGate::stop()
{
    m_listener.close();
}

void UpgradeGate::acceptWaiting()
{
    while (QTcpSocket* socket = m_listener.nextPendingConnection()) {
        if (m_waiting.size() >= mostWaiting) {
            socket->abort();
            socket->deleteLater();
            continue;
        }
        m_waiting.insert(socket);
        // Answers are small; held back to be sent together they would come 40 ms late.
        socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { readRequest(socket); });
        connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
            m_waiting.erase(socket);
            socket->deleteLater();
        });
        QTimer::singleShot(patience, socket, [this, socket] {
            if (m_waiting.contains(socket))
                refuse(socket, {UpgradeVerdict::Kind::refused, 408, "The request took too long."});
        });
    }
}

void UpgradeGate::readRequest(QTcpSocket* socket)
{
    if (!m_waiting.contains(socket)) {
        socket->readAll(); // Refused already; whatever else it sends is not looked at.
        return;
    }
    // Only looked at: the upgrade reads the same bytes again.
    const QByteArray bytes = socket->peek(UpgradeRequest::longestHead + 4);
    auto verdict =
        UpgradeRequest::judge(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())), m_token);
    if (verdict.kind == UpgradeVerdict::Kind::accepted && !m_mayOpen())
        verdict = {UpgradeVerdict::Kind::refused, 503, "Too many sessions are open. Close one, or try again later."};
    switch (verdict.kind) {
    case UpgradeVerdict::Kind::incomplete:
        break;
    case UpgradeVerdict::Kind::accepted:
        upgrade(socket);
        break;
    case UpgradeVerdict::Kind::refused:
        refuse(socket, verdict);
        break;
    }
}

void UpgradeGate::refuse(QTcpSocket* socket, const UpgradeVerdict& verdict)
{
    m_waiting.erase(socket);
    socket->readAll();
    socket->write(QByteArray::fromStdString(verdict.response()));
    socket->disconnectFromHost();
    // A client that never reads its answer is not waited for.
    QTimer::singleShot(patience, socket, [socket] { socket->abort(); });
}

void UpgradeGate::upgrade(QTcpSocket* socket)
{
    m_waiting.erase(socket);
    disconnect(socket, nullptr, this, nullptr);
    m_upgrader.handleConnection(socket);
}

void UpgradeGate::takeUpgraded()
{
    while (QWebSocket* socket = m_upgrader.nextPendingConnection()) {
        socket->setParent(nullptr);
        m_webSocketOpened(std::unique_ptr<QWebSocket>(socket));
    }
}

} // namespace quorvell
