// SPDX-License-Identifier: MIT
#include "LiveService/server/ServiceDoor.h"

#include "Http/WebSocketUpgrade.h"

#include <QCryptographicHash>
#include <QSslSocket>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

constexpr qint64 readAhead = HttpRequest::longestHead + HttpRequest::longestBody + 4;

/// What proves that the request for a WebSocket was understood, in RFC 6455.
QByteArray acceptanceOf(std::string_view key)
{
    const std::string_view suffix = websocket_upgrade::acceptanceSuffix;
    QByteArray text(key.data(), static_cast<qsizetype>(key.size()));
    text.append(suffix.data(), static_cast<qsizetype>(suffix.size()));
    return QCryptographicHash::hash(text, QCryptographicHash::Sha1).toBase64();
}

/// Before encryption is agreed on nothing can be said.
bool canBeAnswered(QTcpSocket* socket)
{
    const auto* secure = qobject_cast<QSslSocket*>(socket);
    return !secure || secure->isEncrypted();
}

} // namespace

ServiceDoor::ServiceDoor(std::string token, const std::optional<QSslConfiguration>& tls, Handlers handlers)
    : m_token(std::move(token))
    , m_handlers(std::move(handlers))
    , m_listener(tls, [this](QTcpSocket* socket) { accept(socket); })
{
}

bool ServiceDoor::listen(const QHostAddress& host, std::uint16_t port)
{
    return m_listener.listen(host, port);
}

void ServiceDoor::serveLine(int descriptor, std::function<void()> ended)
{
    m_line = std::make_unique<LineListener>(descriptor,
        LineListener::Reports{[this](std::unique_ptr<QTcpSocket> socket) {
                                  socket->setParent(&m_listener);
                                  accept(socket.release());
                              },
            std::move(ended)});
}

void ServiceDoor::stop()
{
    m_listener.close();
    m_line.reset();
}

void ServiceDoor::accept(QTcpSocket* socket)
{
    m_waiting[socket].arrival = ++m_arrivals;
    socket->setReadBufferSize(readAhead);
    // Answers are small; held back to be sent together they would come 40 ms late.
    socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    connect(socket, &QTcpSocket::readyRead, this, [this, socket] { read(socket); });
    connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
        m_waiting.erase(socket);
        socket->deleteLater();
    });
    giveUpLater(socket);
    makeRoom();
}

void ServiceDoor::makeRoom()
{
    const auto strangers = m_waiting.size() - bodiesAwaited();
    QTcpSocket* oldest = strangers > mostStrangers ? oldestStranger() : nullptr;
    // In a rush it may have said long ago who it is, and nobody has looked yet.
    if (oldest && !qobject_cast<QSslSocket*>(oldest))
        oldest->waitForReadyRead(0);
    const auto waiting = m_waiting.find(oldest);
    if (waiting != m_waiting.end() && !waiting->second.request)
        giveUp(oldest);
}

QTcpSocket* ServiceDoor::oldestStranger() const
{
    QTcpSocket* oldest = nullptr;
    for (const auto& [socket, waiting] : m_waiting) {
        if (!waiting.request && (!oldest || waiting.arrival < m_waiting.at(oldest).arrival))
            oldest = socket;
    }
    return oldest;
}

std::size_t ServiceDoor::bodiesAwaited() const
{
    return static_cast<std::size_t>(
        std::ranges::count_if(m_waiting, [](const auto& waiting) { return waiting.second.request.has_value(); }));
}

void ServiceDoor::giveUpLater(QTcpSocket* socket)
{
    const bool waitsForHead = !m_waiting[socket].request;
    QTimer::singleShot(patience, socket, [this, socket, waitsForHead] {
        const auto waiting = m_waiting.find(socket);
        if (waiting == m_waiting.end() || !waiting->second.request != waitsForHead)
            return;
        if (canBeAnswered(socket))
            refuse(socket, HttpResponse::refusal(408, "The request took too long."));
        else
            giveUp(socket);
    });
}

void ServiceDoor::giveUp(QTcpSocket* socket)
{
    m_waiting.erase(socket);
    disconnect(socket, nullptr, this, nullptr);
    socket->abort();
    socket->deleteLater();
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
    if (request.method != "POST")
        return upgrade(socket, request, guest);
    if (bodiesAwaited() >= mostBodies)
        return refuse(socket, HttpResponse::refusal(503, "Too many requests are being sent. Try again later."));
    Waiting& waiting = m_waiting[socket];
    waiting.request = request;
    waiting.guest = guest;
    giveUpLater(socket);
    if (request.expectsContinue())
        socket->write("HTTP/1.1 100 Continue\r\n\r\n");
    readBody(socket);
}

void ServiceDoor::upgrade(QTcpSocket* socket, const HttpRequest& request, Guest guest)
{
    m_waiting.erase(socket);
    disconnect(socket, nullptr, this, nullptr);
    socket->skip(static_cast<qint64>(request.headBytes));
    socket->write("HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
                  "Sec-WebSocket-Accept: "
        + acceptanceOf(request.field("sec-websocket-key")) + "\r\n\r\n");
    socket->setParent(nullptr);
    m_handlers.webSocketOpened(guest, std::unique_ptr<QTcpSocket>(socket));
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
    QTimer::singleShot(answerPatience, socket, [socket] { socket->abort(); });
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

} // namespace quorvell
