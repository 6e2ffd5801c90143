// SPDX-License-Identifier: MIT
#include "LiveService/server/ServiceDoor.h"

#include "LiveService/server/StallingSocket.h"

#include <QSslServer>
#include <QTimer>
#include <QWebSocket>

#include <utility>

namespace quorvell {

namespace {

/// Makes connections that can be stalled.
class StallingServer : public QTcpServer {
protected:
    void incomingConnection(qintptr descriptor) override
    {
        auto socket = std::make_unique<StallingSocket>(this);
        if (socket->setSocketDescriptor(descriptor))
            addPendingConnection(socket.release());
    }
};

std::unique_ptr<QTcpServer> makeListener(const std::optional<QSslConfiguration>& tls)
{
    if (!tls)
        return std::make_unique<StallingServer>();
    auto server = std::make_unique<QSslServer>();
    server->setSslConfiguration(*tls);
    return server;
}

constexpr qint64 readAhead = HttpRequest::longestHead + HttpRequest::longestBody + 4;

} // namespace

ServiceDoor::ServiceDoor(std::string token, const std::optional<QSslConfiguration>& tls, Handlers handlers)
    : m_token(std::move(token))
    , m_handlers(std::move(handlers))
    , m_listener(makeListener(tls))
    , m_upgrader(QStringLiteral("Quorvell"), QWebSocketServer::NonSecureMode)
{
    m_upgrader.setHandshakeTimeout(patience);
    connect(m_listener.get(), &QTcpServer::newConnection, this, &ServiceDoor::acceptWaiting);
    connect(m_listener.get(), &QTcpServer::pendingConnectionAvailable, this, &ServiceDoor::acceptWaiting);
    connect(&m_upgrader, &QWebSocketServer::newConnection, this, &ServiceDoor::takeUpgraded);
}

bool ServiceDoor::listen(const QHostAddress& host, std::uint16_t port)
{
    return m_listener->listen(host, port);
}

void ServiceDoor::stop()
{
    m_listener->close();
}

void ServiceDoor::acceptWaiting()
{
    while (QTcpSocket* socket = m_listener->nextPendingConnection()) {
        if (m_waiting.size() >= mostWaiting) {
            socket->abort();
            socket->deleteLater();
            continue;
        }
        m_waiting[socket];
        socket->setReadBufferSize(readAhead);
        // Answers are small; held back to be sent together they would come 40 ms late.
        socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { read(socket); });
        connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
            m_waiting.erase(socket);
            socket->deleteLater();
        });
        giveUpLater(socket);
        read(socket);
    }
}

void ServiceDoor::giveUpLater(QTcpSocket* socket)
{
    const bool waitsForHead = !m_waiting[socket].request;
    QTimer::singleShot(patience, socket, [this, socket, waitsForHead] {
        const auto waiting = m_waiting.find(socket);
        if (waiting != m_waiting.end() && !waiting->second.request == waitsForHead)
            refuse(socket, HttpResponse::refusal(408, "The request took too long."));
    });
}

void ServiceDoor::read(QTcpSocket* socket)
{
    const auto waiting = m_waiting.find(socket);
    if (waiting == m_waiting.end())
        socket->readAll(); // Answered already; whatever else it sends is not looked at.
    else if (waiting->second.request)
        readBody(socket);
    else
        readHead(socket);
}

void ServiceDoor::readHead(QTcpSocket* socket)
{
    // Only looked at: an upgrade reads the same bytes again.
    const QByteArray bytes = socket->peek(HttpRequest::longestHead + 4);
    const auto reading = HttpReading::of(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
    if (reading.kind == HttpReading::Kind::incomplete)
        return;
    if (reading.kind == HttpReading::Kind::refused)
        return refuse(socket, HttpResponse::refusal(reading.status, reading.reason));
    const auto route = ServiceRoute::of(reading.request, m_token);
    if (!route.kind)
        return refuse(socket, route.refusal);
    const Guest guest{*route.kind, ++m_guests};
    if (const auto refusal = m_handlers.refuse(guest))
        return refuse(socket, *refusal);
    letIn(socket, reading.request, guest);
}

void ServiceDoor::letIn(QTcpSocket* socket, const HttpRequest& request, Guest guest)
{
    if (request.method == "POST") {
        m_waiting[socket] = {request, guest};
        giveUpLater(socket);
        if (request.expectsContinue())
            socket->write("HTTP/1.1 100 Continue\r\n\r\n");
        readBody(socket);
        return;
    }
    m_waiting.erase(socket);
    disconnect(socket, nullptr, this, nullptr);
    socket->setReadBufferSize(0); // The WebSocket has bounds of its own.
    m_upgrading[socket->peerPort()] = {guest, socket};
    connect(socket, &QTcpSocket::disconnected, this, [this, port = socket->peerPort()] { m_upgrading.erase(port); });
    m_upgrader.handleConnection(socket);
}

void ServiceDoor::readBody(QTcpSocket* socket)
{
    const Waiting& waiting = m_waiting[socket];
    const auto whole = static_cast<qint64>(waiting.request->headBytes + waiting.request->bodyBytes);
    if (socket->bytesAvailable() < whole)
        return;
    socket->skip(static_cast<qint64>(waiting.request->headBytes));
    std::string body = socket->read(static_cast<qint64>(waiting.request->bodyBytes)).toStdString();
    const Guest guest = waiting.guest;
    m_waiting.erase(socket);
    m_handlers.posted(guest, std::move(body), HttpAnswer(socket));
}

void ServiceDoor::refuse(QTcpSocket* socket, const HttpResponse& response)
{
    m_waiting.erase(socket);
    socket->readAll();
    HttpAnswer(socket).answer(response);
    // A client that never reads its answer is not waited for.
    QTimer::singleShot(patience, socket, [socket] { socket->abort(); });
}

void ServiceDoor::takeUpgraded()
{
    while (QWebSocket* socket = m_upgrader.nextPendingConnection()) {
        socket->setParent(nullptr);
        const auto upgraded = m_upgrading.extract(socket->peerPort());
        std::unique_ptr<QWebSocket> owned(socket);
        if (!upgraded.empty())
            m_handlers.webSocketOpened(
                upgraded.mapped().first, std::move(owned), dynamic_cast<StallingSocket*>(upgraded.mapped().second));
    }
}

} // namespace quorvell
