// SPDX-License-Identifier: MIT
#include "LiveService/server/WebSocketTransport.h"

#include "LiveService/server/StallingSocket.h"

#include <utility>

namespace quorvell {

namespace {

constexpr int abnormalClosure = 1006; ///< Never sent: the connection just ends.

} // namespace

WebSocketTransport::WebSocketTransport(std::unique_ptr<QWebSocket> socket, StallingSocket* wire)
    : m_socket(std::move(socket))
    , m_wire(wire)
{
    m_socket->setMaxAllowedIncomingMessageSize(longestMessage);
    m_socket->setMaxAllowedIncomingFrameSize(longestMessage);
}

WebSocketTransport::~WebSocketTransport()
{
    // A socket that is closed by its end still speaks.
    disconnect(m_socket.get(), nullptr, this, nullptr);
}

void WebSocketTransport::begin(Reports reports)
{
    m_reports = std::move(reports);
    connect(m_socket.get(), &QWebSocket::textMessageReceived, this,
        [this](const QString& text) { m_reports.textReceived(text.toStdString()); });
    connect(m_socket.get(), &QWebSocket::binaryMessageReceived, this, [this] { m_reports.nonsenseReceived(); });
    connect(m_socket.get(), &QWebSocket::disconnected, this, [this] { m_reports.lost(); });
    connect(m_socket.get(), &QWebSocket::pong, this, [this] { m_awaitsPong = false; });
    connect(&m_ping, &QTimer::timeout, this, &WebSocketTransport::ping);
    m_ping.start(pingPeriod);
}

void WebSocketTransport::send(const std::string& text)
{
    if (m_isFrozen)
        return;
    if (m_socket->bytesToWrite() > longestUnsent + static_cast<qint64>(text.size()))
        m_socket->abort();
    else
        m_socket->sendTextMessage(QString::fromStdString(text));
}

void WebSocketTransport::close(int code, std::string_view reason)
{
    if (code == abnormalClosure || m_isFrozen) {
        m_socket->flush();
        m_socket->abort();
        return;
    }
    m_socket->close(static_cast<QWebSocketProtocol::CloseCode>(code),
        QString::fromUtf8(reason.data(), static_cast<qsizetype>(reason.size())));
    // A client that does not answer the close is not waited for.
    QTimer::singleShot(closePatience, this, [this] { m_socket->abort(); });
}

void WebSocketTransport::abort()
{
    m_socket->abort();
}

void WebSocketTransport::freeze()
{
    m_isFrozen = true;
    m_ping.stop();
    if (m_wire)
        m_wire->freeze();
}

void WebSocketTransport::ping()
{
    if (m_awaitsPong) {
        m_socket->abort();
        return;
    }
    m_awaitsPong = true;
    m_socket->ping();
}

} // namespace quorvell
